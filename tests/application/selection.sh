#!/usr/bin/env bash
# Presses beside the books select nothing, in the grid and in the list, so that the keys of the library act on no book.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"
. "$here/drive-files.sh"

start_with 01 02 03
place_library

# ask_to_remove: the keys for it bring up the alert.
ask_to_remove() {
    key ctrl+Delete
    within 20 library_has_a_window_over_it
}
agree() {
    key Tab
    key Return
    within 20 window_is Pagora
}

# In the grid there is no alert without a book.
press "The Lantern Keeper, Ada Marlow" cell
settle
click 480 700
settle
key ctrl+Delete
settle
! library_has_a_window_over_it || fail "a book of the grid was still selected"
press "The Lantern Keeper, Ada Marlow" cell
settle
ask_to_remove
agree
within 30 catalogue 'len(books) == 2'

# In the list there is one in any case; it removes what the last press selected.
press List button
settle
press "Letters from the Orchard, Celia Wren" row
settle
click 480 700
settle
picture nothing-selected
ask_to_remove
agree
settle
catalogue 'len(books) == 2' || fail "a book of the list was still selected"
press "A Quiet Harbour, Bruno Castell" row
settle
ask_to_remove
agree
within 30 catalogue 'len(books) == 1'
key ctrl+q
within 20 ended
program=
