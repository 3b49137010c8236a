#!/usr/bin/env bash
# With a German locale the program's texts are German; stored values do not change.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

speak de DE
"$here/make-sample-books" "$HOME/books" >/dev/null
echo "no book" >"$HOME/books/broken.epub"
start "$HOME/books/01 "*.epub "$HOME/books/broken.epub"
within 60 window_is "Nicht aufgenommene Bücher"
picture errors
key Escape
within 20 window_is Pagora
within 20 catalogue 'len(books) == 1'
picture library
key ctrl+comma
within 20 window_is Einstellungen
picture settings
key alt+s
within 20 window_is Pagora
[ "$(stored DragDropMode)" = '"Copy"' ] || fail "the stored mode is a translated one"
key Right
settle
key Return
reads "The Lantern Keeper"
picture page
key ctrl+w
within 20 window_is Pagora
key F1
reads "Anleitung zu Pagora"
picture guide
key ctrl+w
within 20 window_is Pagora
quit
