#!/usr/bin/env bash
# All controls in all windows of the program have accessible names.
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"

# look WINDOW [LINE]: expects that all visible controls have names, and that the line is in the accessible tree.
look() {
    settle
    look_now "$@"
}
look_now() {
    within 60 sees "$@"
    [ -z "$unnamed" ] || fail "$1: without a name: $unnamed"
}
sees() {
    unnamed=$(timeout 300 /usr/bin/python3 "$tests/accessible-names.py" "$pictures/$1.txt")
    grep -q "^frame | " "$pictures/$1.txt" && grep -q "^ *${2:-}" "$pictures/$1.txt"
}
# only_page NAME: expects that the window of the fixed pages has only this page in its accessible tree.
only_page() {
    local pages
    pages=$(grep "document text" "$pictures/fixed.txt" | sed 's/^ *document text | \(.*\) | .*/\1/')
    [ "$pages" = "$1" ] || fail "the pages are: $pages"
}

start
within 60 window_is Pagora
# The role of a button has two names.
look empty "\(push \)\?button | Import…"
key ctrl+comma
within 20 window_is Settings
look settings "\(check box\|radio button\) | Copy the files into the library folder | checked"
key Escape
within 20 window_is Pagora
key ctrl+question
within 20 window_is "Keyboard Shortcuts"
look shortcuts
key Escape
within 20 window_is Pagora
key F10
look menu "menu item | Settings"
key Up Return
within 20 window_is "About Pagora"
look about
key Escape
within 20 window_is Pagora
quit

"$here/make-sample-books" "$HOME/books" >/dev/null
echo "no book" >"$HOME/books/broken.epub"
start "$HOME/books/01 "*.epub "$HOME/books/02 "*.epub "$HOME/books/broken.epub"
within 60 window_is "Books Not Added"
look errors "text | Files that could not be added"
key Escape
within 20 window_is Pagora
fill
key ctrl+f
look search "entry | Search the library"
key Escape
settle
key Right
look grid "table cell | A Quiet Harbour, Bruno Castell"
key ctrl+Delete
look alert "dialog | Are You sure to remove epub(s) from library?"
key Escape
settle
key Menu
look book-menu "menu item | Read this book"
key Escape
settle
press List button
look list "table row | A Quiet Harbour, Bruno Castell"
press Covers button
settle
key Right Return
within 20 window_is "Pagora - A Quiet Harbour"
fill
look reader "slider | Location in the book"
press "Display options" button
look options "slider | Text size"
# The toolkit's own containers may be groups without names.
sees options "\(grouping\|panel\) | Colours" || fail "the group of colours has no name"
key Escape
settle
key ctrl+w
within 20 window_is Pagora
quit

"$here/make-fixed-book" "$HOME/fixed.epub"
start "$HOME/fixed.epub"
within 60 window_is "Pagora - Six Views"
look fixed "slider | Location in the book"
# The prepared page enters the tree when it is shown.
only_page "Six Views, The hill"
key Right
look fixed "document text | Six Views, The lake | focused"
only_page "Six Views, The lake"
key ctrl+w
within 20 window_is Pagora
quit

"$here/make-slow-books" "$HOME/books/01 "*.epub "$HOME/Documents/ePubLibrary/slow "{0..11}.epub
start
within 60 window_is "Preparing the Library"
look_now progress "frame | Preparing the Library"
grep -q "^ *progress bar | " "$pictures/progress.txt" || fail "there is no progress"
kill "$program"
program=
