#!/usr/bin/env bash
# Clicks beside the books clear the selection, in the grid and in the list, so that the library's keys have no effect.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"
. "$here/drive-files.sh"

start_with 01 02 03
place_library

# ask_to_remove: presses the keys that show the alert.
ask_to_remove() {
    key ctrl+Delete
    within 20 library_has_a_window_over_it
}
agree() {
    key Tab
    key Return
    within 20 window_is Pagora
}

# In the grid no alert is shown without a selection.
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

# In the list it is always shown; it removes the books selected by the last click.
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
quit
