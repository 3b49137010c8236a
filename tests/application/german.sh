#!/usr/bin/env bash
# Where German is asked for, the program speaks it; what it stores stays the same.
set -euo pipefail
. "$(dirname "$0")/../../scripts/drive.sh"

export LANGUAGE=de
"$here/make-sample-books" "$HOME/books" >/dev/null
echo "no book" >"$HOME/books/broken.epub"
start "$HOME/books/01 "*.epub "$HOME/books/broken.epub"
within 60 window_is "Nicht aufgenommene Bücher"
picture errors
xdotool key Escape
within 20 window_is Pagora
within 20 catalogue 'len(books) == 1'
picture library
xdotool key ctrl+comma
within 20 window_is Einstellungen
picture settings
xdotool key alt+s
within 20 window_is Pagora
[ "$(stored DragDropMode)" = '"Copy"' ] || fail "the stored mode is a translated one"
xdotool key Right
settle
xdotool key Return
reads "The Lantern Keeper"
picture page
xdotool key ctrl+w
within 20 window_is Pagora
xdotool key F1
reads "Anleitung zu Pagora"
picture guide
xdotool key ctrl+w
within 20 window_is Pagora
xdotool key ctrl+q
within 20 ended
program=
