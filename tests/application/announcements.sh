#!/usr/bin/env bash
# Assistive technology gets events for the import and its errors, for a focused page, for each page turn, for the
# location, for a missing page and for an alert.
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
. "$(dirname "$0")/../drive/drive.sh"

told=$pictures/told.txt
rm -f "$told"
/usr/bin/python3 "$tests/announcements.py" "$told" &
ends_with_us $!
within 60 grep -qx listening "$told"
# The role of a status, which has two names.
status='\(status bar\|log\)'
heard=0
# hears LINE: waits for a line with this prefix after the previous match.
is_told() { tail -n +$((heard + 1)) "$told" | grep -q "^$1"; }
hears() {
    within 60 is_told "$1"
    heard=$((heard + $(tail -n +$((heard + 1)) "$told" | grep -n -m 1 "^$1" | cut -d : -f 1)))
}

"$here/make-sample-books" "$HOME/books" >/dev/null
echo "no book" >"$HOME/books/broken.epub"
start "$HOME/books/01 "*.epub "$HOME/books/02 "*.epub "$HOME/books/broken.epub"
hears "focus | text | Files that could not be added"
within 20 window_is "Books Not Added"
key Escape
within 20 window_is Pagora

"$here/make-slow-books" "$HOME/books/01 "*.epub "$HOME/new/slow "{0,1,2}.epub
"$programs/pagora" "$HOME/new/"*.epub
hears "name | $status | [0-9]* of 3"
within 120 catalogue "len(books) == 5"
settle

key Home Right
hears "focus | table cell | A Quiet Harbour, Bruno Castell"
settle
key ctrl+Delete
# Newer toolkits report a new alert, the older one the name of a dialog.
hears "\(name | dialog\|added | alert\) | Are You sure to remove epub(s) from library?"
key Escape
within 20 window_is Pagora
settle
key Return
hears "focus | document text | A Quiet Harbour"
hears "description | document text | Temple and zephyr 1.1 Candle Ada measured"
reads "A Quiet Harbour"
key Right
hears "description | document text | [^T ]"
key End
hears "name | $status | [1-9][0-9]* %"
key ctrl+w
within 20 window_is Pagora
settle

"$here/make-fixed-book" "$HOME/whole.epub"
python3 - "$HOME/whole.epub" "$HOME/fixed.epub" <<'END'
import sys, zipfile
with zipfile.ZipFile(sys.argv[1]) as whole, zipfile.ZipFile(sys.argv[2], "w") as new:
    for name in whole.namelist():
        if not name.endswith("page2.xhtml"):
            new.writestr(name, whole.read(name))
END
"$programs/pagora" "$HOME/fixed.epub"
hears "focus | document text | Six Views"
hears "description | document text | The hill"
reads "Six Views"
key Right
hears "description | document text | This page is missing from the book."
key Right
hears "name | $status | 3 of 6"
hears "description | document text | The road"
key ctrl+w
within 20 window_is Pagora
quit
if grep -n "| \(gtkmm__\)\?\(Gtk\|WebKit\|Pagora\|CustomObject\)[A-Z_]" "$told"; then fail "something is called by its type"; fi
