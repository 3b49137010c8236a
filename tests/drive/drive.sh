# shellcheck shell=bash
# Drives the running program with real input. Scripts source this with their own arguments: `programs`, the folder of the
# binaries, and `pictures`, the folder for screenshots. Needs a display; see scripts/headless. Input and screenshots are in
# drive-x11.sh and drive-wayland.sh, with the same function names.

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if [ -z "${programs:-}" ]; then
    programs=$(realpath "$1")
    mkdir -p "$2"
    pictures=$(realpath "$2")
fi

program=
helpers=()
# ends_with_us PROCESS: registers a process that is ended together with the script.
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

# speak [LANGUAGE COUNTRY]: the program starts on a desktop with this language from now on, such as de DE; without
# arguments on one without a language. C.UTF-8 has no translations in every C library, so the locale is made.
language=()
speak() {
    language=()
    unset LANGUAGE
    [ $# -eq 2 ] || return 0
    local locales=$HOME/locales name=$1_$2
    mkdir -p "$locales"
    [ -d "$locales/$name.UTF-8" ] || localedef -i "$name" -f UTF-8 "$locales/$name.UTF-8"
    export LANGUAGE=$1
    language=(LANG="$name.UTF-8" LOCPATH="$locales")
}

start() {
    env "${language[@]}" "$programs/pagora" "$@" &
    program=$!
}

# start_with BOOK...: starts with these sample books in the library, each given by a prefix of its name.
start_with() {
    local files=() book
    "$here/make-sample-books" "$HOME/books" >/dev/null
    for book; do files+=("$HOME/books/$book"*.epub); done
    start "${files[@]}"
    within 60 catalogue "len(books) == ${#files[@]}"
    within 60 window_is Pagora
}

# shelve COUNT: adds COUNT copies of a sample book to the library of the running program.
shelve() {
    local files=() number total
    mkdir -p "$HOME/shelf"
    for number in $(seq "$1"); do
        cp "$HOME/books/06 Marginalia.epub" "$HOME/shelf/Volume $number.epub"
        files+=("$HOME/shelf/Volume $number.epub")
    done
    total=$(($(stored BookData | python3 -c "import json, sys; print(len(json.load(sys.stdin)))") + $1))
    "$programs/pagora" "${files[@]}"
    within 300 catalogue "len(books) == $total"
    within 60 window_is Pagora
}

# spell TEXT: presses the keys of its lower-case letters and spaces.
spell() {
    local keys=() i
    for ((i = 0; i < ${#1}; ++i)); do
        [ "${1:i:1}" = " " ] && keys+=(space) || keys+=("${1:i:1}")
    done
    key "${keys[@]}"
}

stored() { "$programs/pagora-defaults" "$1"; }
# catalogue EXPRESSION: succeeds if a Python expression over the stored entries, as `books`, is true.
catalogue() { stored BookData | python3 -c "import json, sys; books = json.load(sys.stdin); sys.exit(not ($1))"; }
ended() { ! kill -0 "$program" 2>/dev/null; }
# Quits the program with its key, and expects success.
quit() {
    key ctrl+q
    within 60 ended
    wait "$program" || fail "the program ended with $?"
    program=
}
window_is() { [ "$(window_title)" = "$1" ]; }
# another_window NUMBER: succeeds if a window other than this one has the keyboard focus.
another_window() {
    local active
    active=$(active_window) && [ -n "$active" ] && [ "$active" != "$1" ]
}
is_active() { [ "$(active_window)" = "$1" ]; }

# Starts the program with a right-to-left layout from now on: in Hebrew, with English texts.
mirror() {
    local mirrored=$HOME/mirrored
    mkdir -p "$mirrored/translations/he/LC_MESSAGES"
    cp "$programs"/pagora "$programs"/pagora-* "$mirrored"
    msgen "$here/../../po/pagora.pot" | msgfmt -o "$mirrored/translations/he/LC_MESSAGES/pagora.mo" -
    programs=$mirrored
    speak he IL
}

# seen [X Y WIDTH HEIGHT]: prints a checksum of the area. colors: prints its number of colours.
seen() { pixels "$@" | sha1sum; }
colors() { pixels "$@" | identify -format %k ppm:-; }
# color_at X Y: prints the colour as six hexadecimal digits.
color_at() { pixels "$1" "$2" 1 1 | tail -c 3 | od -An -tx1 | tr -d ' '; }
# color_is X Y COLOUR: succeeds if the pixel has this colour, with a tolerance for the rounding of renderers.
color_is() {
    local drawn shift
    drawn=$(color_at "$1" "$2")
    for shift in 16 8 0; do
        local difference=$(((0x$drawn >> shift & 255) - (0x$3 >> shift & 255)))
        [ "${difference#-}" -le 2 ] || return 1
    done
}

# The middle of the screen, where a reader draws only its page.
page_now() { seen 330 120 500 400; }
page_is_drawn() { [ "$(colors 330 120 500 400)" -gt 20 ]; }
page_is_another() { [ "$(page_now)" != "$page_before" ]; }
# reads TITLE: waits until the book with this title is open and its page is drawn.
reads() {
    within 60 window_is "Pagora - $1"
    within 60 page_is_drawn
    settle
}
# read_first TITLE: opens the first book of the library by keyboard.
read_first() {
    settle
    key Home
    settle
    key Return
    reads "$1"
}
# turn KEY...: presses the keys and waits until another page is shown.
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

# has_place X Y WIDTH HEIGHT: succeeds if the active window has this position and width; otherwise requests them.
has_place() {
    set_window_place "$@" || true
    is_as_wide_as "$3"
}
is_as_wide_as() {
    local width
    read -r _ _ width _ < <(window_place) && [ "$width" = "$1" ]
}
# take_place X Y WIDTH HEIGHT: moves the active window there and makes sure that it stays. A new window may still choose
# its own size after that.
take_place() {
    for _ in 1 2 3 4 5; do
        within 20 has_place "$@"
        settle
        is_as_wide_as "$3" && return
    done
    fail "the window does not keep its place"
}
# Makes the program's window fill the screen, so that positions in it are known.
fill() {
    local width height
    read -r width height < <(screen_size)
    take_place 0 0 "$width" "$height"
}
