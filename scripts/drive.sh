# shellcheck shell=bash
# Drives the running program with real input, for scripts that source this with their own arguments: `programs`, the folder
# of the binaries, and `pictures`, the one where screenshots go. Needs a display; see scripts/headless. What moves, presses
# and looks is in drive-x11.sh and drive-wayland.sh, under the same names.

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if [ -z "${programs:-}" ]; then
    programs=$(realpath "$1")
    mkdir -p "$2"
    pictures=$(realpath "$2")
fi

program=
helpers=()
# ends_with_us PROCESS: it is ended when the script ends, as the program is.
ends_with_us() { helpers+=("$1"); }
trap 'kill "${helpers[@]}" ${program:+"$program"} 2>/dev/null || true' EXIT

fail() {
    save_screen "$pictures/failed.png" || true
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

if [ -n "${WAYLAND_DISPLAY:-}" ]; then
    . "$here/drive-wayland.sh"
else
    . "$here/drive-x11.sh"
fi
within 20 display_is_ready

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
window_is() { [ "$(window_title)" = "$1" ]; }
# another_window NUMBER: a window has the keyboard that is not this one.
another_window() {
    local active
    active=$(active_window) && [ -n "$active" ] && [ "$active" != "$1" ]
}
is_active() { [ "$(active_window)" = "$1" ]; }

# From now on the program is laid out from right to left: it speaks Hebrew, in which all of its own texts are English.
mirror() {
    local mirrored=$HOME/mirrored
    mkdir -p "$mirrored/translations/he/LC_MESSAGES"
    cp "$programs"/pagora "$programs"/pagora-* "$mirrored"
    msgen "$here/../po/pagora.pot" | msgfmt -o "$mirrored/translations/he/LC_MESSAGES/pagora.mo" -
    programs=$mirrored
    export LANGUAGE=he
}

# seen [X Y WIDTH HEIGHT]: a text that stands for what is seen there; colors: how many colours are there.
seen() { pixels "$@" | sha1sum; }
colors() { pixels "$@" | identify -format %k ppm:-; }
# color_at X Y: as six hexadecimal digits.
color_at() { pixels "$1" "$2" 1 1 | tail -c 3 | od -An -tx1 | tr -d ' '; }

# The middle of the screen, where a reader has its page and nothing else is ever drawn.
page_now() { seen 330 120 500 400; }
page_is_drawn() { [ "$(colors 330 120 500 400)" -gt 20 ]; }
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
    key "$@"
    within 60 page_is_another
    settle
}

# Waits until the screen has stopped changing.
settle() {
    local before="" after still=0
    for _ in $(seq 60); do
        after=$(seen)
        [ "$after" = "$before" ] && still=$((still + 1)) || still=0
        [ "$still" -ge 2 ] && return
        before=$after
        sleep 0.25
    done
    fail "the screen does not come to rest"
}

picture() {
    settle
    save_screen "$pictures/$1.png"
    echo "$pictures/$1.png"
}

# The program's window fills the screen, so that places in it are known.
fills() {
    local width height
    read -r width height < <(screen_size)
    has_place 0 0 "$width" "$height"
}
fill() { within 20 fills; }
# has_place X Y WIDTH HEIGHT: the active window has this place and width; asks for it until then.
has_place() {
    set_window_place "$@" || true
    local width
    read -r _ _ width _ < <(window_place) && [ "$width" = "$3" ]
}
