#!/usr/bin/env bash
# Two pages get bookmarks by the keyboard. Then the marks of all books are exported from the menu of the library.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

library=$HOME/Documents/ePubLibrary
mkdir "$HOME/notes"
is_marked() { [ "$(find "$library" -name '*.annotation' | wc -l)" = "$1" ]; }
has_exported() { [ "$(find "$HOME/notes" -name '*.md' | wc -l)" = "$1" ]; }

start_with "01 " "02 "
fill
key Right Return
within 60 window_is "Pagora - A Quiet Harbour"
within 60 page_is_drawn
settle
key ctrl+d
within 20 is_marked 1
key ctrl+w
within 20 window_is Pagora
settle
key Left Return
within 60 window_is "Pagora - The Lantern Keeper"
within 60 page_is_drawn
settle
key ctrl+d
within 20 is_marked 2
key ctrl+w
within 20 window_is Pagora
settle

key F10
settle
picture export-menu
key e
within 20 window_is "Export Marks"
picture export-window
chooser=$(active_window)
key Return
within 20 another_window "$chooser"
settle
picture export-folder
key ctrl+l
settle
key ctrl+a
key asciitilde slash n o t e s Return
within 20 has_exported 2
within 20 window_is "Export Marks"
picture export-outcome
grep -q "# A Quiet Harbour (Bruno Castell)" "$HOME/notes/"*.md || fail "a book has no file with its marks"
key Escape
within 20 window_is Pagora
quit
