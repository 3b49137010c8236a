#!/usr/bin/env bash
# Books are dropped on the library with a real pointer, selected, and moved to the Trash. An import of ten is stopped at
# its third book.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"
. "$here/drive-files.sh"

library=$HOME/Documents/ePubLibrary
trash=$HOME/.local/share/Trash
books=$HOME/books

copies_are() { [ "$(ls "$library" | wc -l)" = "$1" ]; }
is_in_trash() { [ -f "$trash/files/$1" ] && grep -q '^Path=.*ePubLibrary' "$trash/info/$1.trashinfo"; }

"$here/make-sample-books" "$books" >/dev/null
start
within 60 window_is Pagora
place_library

# A source that allows only copying is rejected, as are other files.
offer_files --copy-only "$books/04 The Copper Bridge.epub"
hold_files
settle
release_files
cp "$books/05 Winter Mathematics.epub" "$books/Winter.EPUB"
offer_files "$books/Winter.EPUB"
hold_files
settle
release_files

offer_files "$books/01 The Lantern Keeper.epub" "$books/02 A Quiet Harbour.epub" "$books/03 Letters from the Orchard.epub"
drop_files
within 30 catalogue 'len(books) == 3'
catalogue '[book["Author"] for book in books] == ["Ada Marlow", "Bruno Castell", "Celia Wren"]' ||
    fail "other books came in than were dropped"
[ -f "$books/01 The Lantern Keeper.epub" ] || fail "a book that was to be copied is gone"
settle
# A desktop may give the focus to the window from which files are dragged.
bring_forward Pagora

# The first two of them are moved to the Trash.
press "The Lantern Keeper, Ada Marlow" cell
key_down ctrl
press "A Quiet Harbour, Bruno Castell" cell
key_up ctrl
settle
key ctrl+Delete
within 20 library_has_a_window_over_it
picture alert
key Tab
key Return
within 30 catalogue 'len(books) == 1'
within 30 is_in_trash "01 The Lantern Keeper.epub"
within 30 is_in_trash "02 A Quiet Harbour.epub"
copies_are 1 || fail "an archive is still in the library folder"
catalogue 'books[0]["Author"] == "Celia Wren"' || fail "the wrong book is gone"
within 20 window_is Pagora

# Imports ten books, the third of which is slow. The import stops after it.
mkdir "$HOME/ten"
for number in 01 02 04 05 06 07 08 09 10; do
    cp "$books/06 Marginalia.epub" "$HOME/ten/Ten $number.epub"
done
"$here/make-slow-books" "$books/08 "*.epub "$HOME/ten/Ten 03.epub"
offer_files "$HOME/ten/Ten "*.epub
drop_files
# The second is finished; nothing of the third is unpacked before its cover is drawn.
third_is_begun() { [ -e "$library/Ten 02.epub" ] && [ -z "$(ls -A "$HOME/.cache/org.pagora.Pagora/_data")" ]; }
within 60 third_is_begun
bring_forward Pagora
stopped() {
    local place
    # shellcheck disable=SC2086
    place=$(place_of Stop button) && click $place
    catalogue 'len(books) == 4'
}
within 300 stopped
copies_are 4 || fail "the import went on"
picture stopped
end_files
bring_forward Pagora
quit
