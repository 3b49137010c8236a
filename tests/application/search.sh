#!/usr/bin/env bash
# The library is searched with real keys. A found book is read while the search stays open. Selecting all books or
# dropping new ones ends the search. A folder's books are imported by keyboard.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"
. "$here/drive-files.sh"

library=$HOME/Documents/ePubLibrary

# The area of the first covers, without text.
covers() { colors 40 120 800 240; }
no_cover_is_shown() { [ "$(covers)" -lt 100 ]; }
covers_are_shown() { [ "$(covers)" -gt 100 ]; }
last_read_is() { stored LastRead | grep -q "$1"; }

mkdir -p "$library"
"$here/make-bare-books" "$library"
"$here/make-sample-books" "$HOME/books" >/dev/null
start
within 60 window_is Pagora
within 60 catalogue 'len(books) == 12'
place_library
picture library

# The menu orders the books.
move 640 820
settle
covers_before=$(seen 40 120 800 240)
covers_changed() { [ "$(seen 40 120 800 240)" != "$covers_before" ]; }
press "Order of the books" button
settle
key Down
key Return
move 640 820
within 20 covers_changed
picture by-title

# Typing opens the search, which ignores case and accents.
spell "emily bronte"
settle
picture found
key Return
key Return
reads "Wuthering Heights"
key Right
key ctrl+w
within 20 window_is Pagora
within 20 last_read_is "Bare 01.epub"
settle
picture continue

# Words that no book has hide all; Escape shows them again.
key ctrl+f
spell nowhere
within 20 no_cover_is_shown
picture nothing
key Escape
within 20 covers_are_shown

# Dropped books are visible.
spell nowhere
within 20 no_cover_is_shown
offer_files "$HOME/books/04 The Copper Bridge.epub"
drop_files
within 30 catalogue 'len(books) == 13'
within 20 covers_are_shown
end_files
bring_forward Pagora

# Selects all books, regardless of the search.
spell villette
settle
key ctrl+a
settle
picture selected
key ctrl+Delete
within 20 library_has_a_window_over_it
key Tab
key Return
within 60 catalogue 'len(books) == 0'
within 20 window_is Pagora
quit
