# shellcheck shell=bash
# Reports the progress of long steps. Sourced by scripts.

# After this many seconds without output, a line says that the step is still running.
: "${quiet_seconds:=20}"

# shown TEXT: shows the progress of a step. On a terminal it replaces the last line; otherwise it prints a line at most
# every 5 seconds.
shown_text='' shown_at=''
shown() {
    [ "$1" != "$shown_text" ] || return 0
    if [ -t 1 ]; then
        printf '\r%s\033[K' "$1"
    elif [ -n "$shown_at" ] && [ $((SECONDS - shown_at)) -lt 5 ]; then
        return 0
    else
        printf '%s\n' "$1"
    fi
    shown_text=$1 shown_at=$SECONDS
}

# Ends the progress line on a terminal.
shown_end() {
    [ -t 1 ] && [ -n "$shown_text" ] && printf '\n'
    shown_text='' shown_at=''
}

# follow NAME FILTER: reads the output of a step and calls FILTER with each line. FILTER sets `progress` if the line
# contains the progress of the step, and prints what the user must see. If there is no output, a line says so.
follow() {
    local name=$1 filter=$2 line='' part start=$SECONDS heard=$SECONDS status
    progress=
    while true; do
        status=0
        IFS= read -r -t 1 part || status=$?
        line+=$part
        if [ "$status" -gt 128 ]; then
            [ $((SECONDS - heard)) -ge "$quiet_seconds" ] || continue
            heard=$SECONDS
            shown "$name:${progress:+ $progress,} still running after $((SECONDS - start)) s"
            continue
        fi
        heard=$SECONDS
        [ "$status" -ne 0 ] && [ -z "$line" ] || "$filter" "$line"
        [ "$status" -eq 0 ] || break
        line=
        [ -z "$progress" ] || shown "$name: $progress"
    done
    shown_end
}

# passed LINE: the filter for a step whose whole output is shown.
passed() {
    shown_end
    printf '%s\n' "$1"
}
