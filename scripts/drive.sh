# shellcheck shell=bash
# Drives the running program with real input, for scripts that source this with their own arguments: `programs`, the folder
# of the binaries, and `pictures`, the one where screenshots go. Needs a display; see scripts/headless.

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if [ -z "${programs:-}" ]; then
    programs=$(realpath "$1")
    mkdir -p "$2"
    pictures=$(realpath "$2")
fi

openbox --sm-disable 2>/dev/null &
window_manager=$!
program=
trap 'kill "$window_manager" ${program:+"$program"} 2>/dev/null || true' EXIT

fail() {
    import -window root "$pictures/failed.png" || true
    echo "$(basename "$0"): $1 (see $pictures/failed.png)" >&2
    exit 1
}

# within SECONDS COMMAND...: tries the command until it succeeds.
within() {
    local tries=$(($1 * 10))
    shift
    until "$@" >/dev/null 2>&1; do
        [ $((tries--)) -gt 0 ] || fail "waited in vain for: $*"
        sleep 0.1
    done
}

within 20 xdotool get_num_desktops

start() {
    "$programs/pagora" "$@" &
    program=$!
}

# start_with BOOK...: starts with these of the sample books, each given by the beginning of its name, in the library.
start_with() {
    local files=() book
    "$here/make-sample-books" "$HOME/books" >/dev/null
    for book; do files+=("$HOME/books/$book"*.epub); done
    start "${files[@]}"
    within 60 catalogue "len(books) == ${#files[@]}"
    within 60 window_is Pagora
}

stored() { "$programs/pagora-defaults" "$1"; }
# catalogue EXPRESSION: a Python expression over the stored entries, as `books`, that must be true.
catalogue() { stored BookData | python3 -c "import json, sys; books = json.load(sys.stdin); sys.exit(not ($1))"; }
ended() { ! kill -0 "$program" 2>/dev/null; }
window_is() { [ "$(xdotool getactivewindow getwindowname)" = "$1" ]; }

# From now on the program is laid out from right to left: it speaks Hebrew, in which all of its own texts are English.
mirror() {
    local mirrored=$HOME/mirrored
    mkdir -p "$mirrored/translations/he/LC_MESSAGES"
    cp "$programs"/pagora "$programs"/pagora-* "$mirrored"
    msgen "$here/../po/pagora.pot" | msgfmt -o "$mirrored/translations/he/LC_MESSAGES/pagora.mo" -
    programs=$mirrored
    export LANGUAGE=he
}

# The middle of the screen, where a reader has its page and nothing else is ever drawn.
page_now() { import -window root -crop 500x400+330+120 -depth 8 rgb:- | sha1sum; }
page_is_drawn() { [ "$(import -window root -crop 500x400+330+120 -format %k info:)" -gt 20 ]; }
page_is_another() { [ "$(page_now)" != "$page_before" ]; }
# reads TITLE: the book with this title is read, and its page is there.
reads() {
    within 60 window_is "Pagora - $1"
    within 60 page_is_drawn
    settle
}
# turn KEY...: turns from a page that is at rest to one that is not the same.
turn() {
    page_before=$(page_now)
    xdotool key "$@"
    within 60 page_is_another
    settle
}

# Waits until the screen has stopped changing.
settle() {
    local before="" after still=0
    for _ in $(seq 60); do
        after=$(import -window root -depth 8 rgb:- | sha1sum)
        [ "$after" = "$before" ] && still=$((still + 1)) || still=0
        [ "$still" -ge 2 ] && return
        before=$after
        sleep 0.25
    done
    fail "the screen does not come to rest"
}

picture() {
    settle
    import -window root "$pictures/$1.png"
    echo "$pictures/$1.png"
}

click() { xdotool mousemove --sync "$1" "$2" click --delay 60 "${3:-1}"; }
# The program's window fills the screen, so that places in it are known.
fills() {
    local width height
    read -r width height < <(xdotool getdisplaygeometry)
    xdotool getactivewindow windowmove 0 0 windowsize "$width" "$height" || true
    xdotool getactivewindow getwindowgeometry --shell | grep -qx "WIDTH=$width"
}
fill() { within 20 fills; }
