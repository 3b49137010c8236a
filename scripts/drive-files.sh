# shellcheck shell=bash
# Drags files onto the running program, for scripts that have sourced drive.sh. The library window takes the left part of the
# screen, the source of the drag stands on the right.

library_width=960
library_window=
source_window=
dragging=
nudge=1

# The library window without what the desktop might have given it.
place_library() {
    local height
    height=$(xdotool getdisplaygeometry | cut -d' ' -f2)
    library_window=$(xdotool getactivewindow)
    xdotool windowsize "$library_window" "$library_width" "$height" windowmove "$library_window" 0 0
    settle
}

# An alert or another window of the program has the keyboard.
library_has_a_window_over_it() {
    local active
    active=$(xdotool getactivewindow) && [ -n "$active" ] && [ "$active" != "$library_window" ]
}

# with_window TITLE COMMAND...: fails also when a window goes while it is looked for; call it with `within`.
with_window() {
    local title=$1
    shift
    xdotool search --onlyvisible --name "^$title\$" "$@"
}

# bring_forward TITLE: the window gets the keyboard.
bring_forward() {
    within 20 with_window "$1" windowactivate
    within 20 window_is "$1"
}

# offer_files FILE...: what the next drag carries; see tests/application/drag-source.cpp.
offer_files() {
    end_files
    "$programs/drag-source" "$@" &
    source_window=$!
    within 20 with_window "Drag Source" windowmove 1020 60
    settle
}

# The part of the library where the drop target says what it is.
drop_label() { import -window root -crop 400x70+280+760 -depth 8 rgb:- | sha1sum; }
# Looks again with the pointer at another point: the toolkit may have merged all that came before into one movement.
drop_label_changed() {
    xdotool mousemove_relative --sync -- $((nudge = -nudge)) 0
    [ "$(drop_label)" != "$dragging" ]
}

# Takes the files up and holds them over the library.
hold_files() {
    dragging=$(drop_label)
    xdotool mousemove --sync 1120 120 mousedown 1
    local step
    for step in $(seq 16); do
        xdotool mousemove --sync $((1120 - step * 42)) $((120 + step * 20))
        sleep 0.03
    done
}

release_files() { xdotool mouseup 1; }

# Drops the files that are offered, once the library shows that it takes them.
drop_files() {
    hold_files
    within 20 drop_label_changed
    release_files
}

end_files() {
    if [ -n "$source_window" ]; then
        kill "$source_window" 2>/dev/null || true
        wait "$source_window" 2>/dev/null || true
    fi
    source_window=
}
