#!/usr/bin/env bash
# A second start passes its file to the first instance, which opens it without importing it.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

library=$HOME/Documents/ePubLibrary
"$here/make-sample-books" "$HOME/books" >/dev/null
mkdir -p "$library"
cp "$HOME/books/01 "* "$HOME/books/02 "* "$library"
start
within 60 window_is Pagora
within 20 catalogue 'len(books) == 2'

timeout 60 "$programs/pagora" "$HOME/books/03 Letters from the Orchard.epub" || fail "the second start did not end well"
reads "Letters from the Orchard"
picture second-start
[ -f "$library/03 Letters from the Orchard.epub" ] || fail "there is no copy to read from"

# A missing file shows an alert, and the open book stays open.
reader=$(active_window)
timeout 60 "$programs/pagora" "$HOME/books/none.epub" || fail "the start with a missing file did not end well"
within 20 another_window "$reader"
picture missing-file
key Return
reads "Letters from the Orchard"
[ -f "$library/03 Letters from the Orchard.epub" ] || fail "the copy that is read is gone"
key ctrl+w
within 20 window_is Pagora
within 20 [ ! -e "$library/03 Letters from the Orchard.epub" ]
catalogue 'len(books) == 2' || fail "the catalogue changed"

# A book of the library that is opened by its own path stays there.
timeout 60 "$programs/pagora" "$library/01 The Lantern Keeper.epub" || fail "the second start did not end well"
reads "The Lantern Keeper"
key ctrl+w
within 20 window_is Pagora
[ -f "$library/01 The Lantern Keeper.epub" ] || fail "a book of the library is gone"

# An instance that cannot reach the first does not use the same home folder.
DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere timeout 60 "$programs/pagora" 2>"$HOME/said" || fail "it did not end"
grep -q "already running with this home folder" "$HOME/said" || fail "the second start said nothing"
quit
