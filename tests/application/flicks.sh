#!/usr/bin/env bash
# Two fingers on a touchpad turn exactly one page when they flick horizontally, and none when they scroll or brush the
# touchpad. In a book that runs from right to left the directions are the same.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

# right_to_left BOOK FILE: writes the same book with its text from right to left.
right_to_left() {
    python3 - "$1" "$2" <<'END'
import sys, zipfile
with zipfile.ZipFile(sys.argv[1]) as old, zipfile.ZipFile(sys.argv[2], "w", zipfile.ZIP_DEFLATED) as new:
    for name in old.namelist():
        content = old.read(name)
        if name.endswith(".xhtml"):
            content = content.replace(b"<html ", b'<html dir="rtl" ', 1)
        new.writestr(name, content)
END
}
page_is() { [ "$(page_now)" = "$1" ]; }

# turns_by_flicks TITLE: turns pages in the selected book.
turns_by_flicks() {
    local first second
    key Return
    reads "$1"
    fill
    move 640 400
    settle
    turn Page_Down
    first=$(page_now)
    turn Page_Down
    second=$(page_now)
    turn Page_Up
    page_is "$first" || fail "the page is another after it was turned there and back"

    for way in "20 200" "0 -200" "0.8 0"; do
        # shellcheck disable=SC2086
        glide $way
        settle
        page_is "$first" || fail "a page was turned by fingers that move by $way"
    done
    glide 200 10
    within 20 page_is "$second"
    settle
    page_is "$second" || fail "a flick turned more than one page"
    picture "flicked-${1%% *}"
    glide -200 -10
    within 20 page_is "$first"
    settle
    page_is "$first" || fail "a flick turned more than one page back"
    key ctrl+w
    within 20 window_is Pagora
    settle
}

"$here/make-sample-books" "$HOME/books" >/dev/null
right_to_left "$HOME/books/02 "*.epub "$HOME/02 Right to left.epub"
start "$HOME/books/01 "*.epub "$HOME/02 Right to left.epub"
within 60 catalogue 'len(books) == 2'
within 60 window_is Pagora
settle
key Home
settle
turns_by_flicks "The Lantern Keeper"
key End
settle
turns_by_flicks "A Quiet Harbour"
quit
