#!/usr/bin/env bash
# Assistive technology is told, as it happens, of the files that could not be added, of each page that is turned, and of
# the location in the book.
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
. "$(dirname "$0")/../../scripts/drive.sh"

told=$pictures/told.txt
rm -f "$told"
/usr/bin/python3 "$tests/announcements.py" "$told" &
listener=$!
trap 'kill "$window_manager" "$listener" ${program:+"$program"} 2>/dev/null || true' EXIT
within 60 grep -qx listening "$told"
# is_told COUNT LINE: that many lines, or more, begin so.
is_told() { [ "$(grep -c "^$2" "$told")" -ge "$1" ]; }

"$here/make-sample-books" "$HOME/books" >/dev/null
echo "no book" >"$HOME/books/broken.epub"
start "$HOME/books/01 "*.epub "$HOME/books/02 "*.epub "$HOME/books/broken.epub"
within 60 window_is "Books Not Added"
within 60 is_told 1 "focused | text | Files that could not be added"
xdotool key Escape
within 20 window_is Pagora
settle
xdotool key Right
settle
xdotool key Return
within 20 window_is "Pagora - A Quiet Harbour"
within 60 is_told 1 "accessible-description | document text | "
settle
# The toolkit tells only of what it has been asked for.
timeout 200 /usr/bin/python3 "$tests/accessible-names.py" "$pictures/reader.txt" >/dev/null
grep -q "^ *status bar | 0 %" "$pictures/reader.txt" || fail "the location is no status"
described=$(grep -c "^accessible-description | document text | " "$told")
xdotool key Right
within 60 is_told $((described + 1)) "accessible-description | document text | "
xdotool key End
within 60 is_told 1 "accessible-name | status bar | [1-9]"
xdotool key ctrl+w
within 20 window_is Pagora
xdotool key ctrl+q
within 20 ended
program=
