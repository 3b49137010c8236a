#!/usr/bin/env bash
# The program is killed or ended while a book is open. The library and all saved places are restored at the next start.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

start_with 0
kill -9 "$program"
wait "$program" 2>/dev/null || true

start "$HOME/books/04 The Copper Bridge.epub"
reads "The Cartographer's Daughter, or Seven Ways across the Mountains"
turn Right
key ctrl+w
within 20 window_is Pagora
within 20 catalogue 'books[7].get("LastPlace", 0) > 0'
kill -9 "$program"
wait "$program" 2>/dev/null || true

start
within 60 window_is Pagora
catalogue 'len(books) == 8 and books[7]["LastPlace"] > 0' || fail "something of the library is lost"
stored BundleVersion >/dev/null || fail "the settings are lost"
quit

# If the program ends while a book is open, the place in it is kept.
start "$HOME/books/04 The Copper Bridge.epub"
reads "The Cartographer's Daughter, or Seven Ways across the Mountains"
before=$(stored BookData)
turn Right
quit
[ "$(stored BookData)" != "$before" ] || fail "the place is lost"
