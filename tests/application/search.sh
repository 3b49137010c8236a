#!/usr/bin/env bash
# The library is searched with real keys: what is typed finds a book that is read, the search stays while the book is read,
# and selecting all books or a drop of new ones ends it. A folder's books are imported by keyboard.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"
. "$here/drive-files.sh"

library=$HOME/Documents/ePubLibrary

# The part of the window where the first covers are, and no text in their place.
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

# Nothing but typing opens the search, without case and accents.
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

# The books of a drop are seen.
spell nowhere
within 20 no_cover_is_shown
offer_files "$HOME/books/04 The Copper Bridge.epub"
drop_files
within 30 catalogue 'len(books) == 13'
within 20 covers_are_shown
end_files
bring_forward Pagora

# All books are selected, whatever was searched for.
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
key ctrl+q
within 20 ended
program=
