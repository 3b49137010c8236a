#!/usr/bin/env bash
# A book is left while its first page is still on its way, on a machine that is busy: the library is back long before the
# page could have been shown. The page of a book that is not left appears.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

now() { date +%s%3N; }
# A book whose first chapter has two megabytes: long_book FILE
long_book() {
    python3 - "$HOME/books/01 "*.epub "$1" <<'END'
import re, sys, zipfile
with zipfile.ZipFile(sys.argv[1]) as old, zipfile.ZipFile(sys.argv[2], "w", zipfile.ZIP_DEFLATED) as new:
    for name in old.namelist():
        content = old.read(name)
        if name.endswith("chapter1.xhtml"):
            body = re.search(rb"<p.*</p>", content, re.S)[0]
            content = content.replace(body, body * (2_000_000 // len(body)))
        new.writestr(name, content)
END
}
text_is_there() { [ "$(colors 330 120 300 200)" -gt 20 ]; }
# The sign is a dark disc in the middle of a page that is empty.
sign_is_there() { [ "$(colors 740 410 60 60)" -gt 4 ] && ! text_is_there; }

"$here/make-sample-books" "$HOME/books" >/dev/null
long_book "$HOME/Long.epub"
start "$HOME/Long.epub" "$HOME/books/02 "*.epub
within 120 catalogue 'len(books) == 2'
within 60 window_is Pagora
fill
for _ in 1 2 3 4; do
    while :; do :; done &
    ends_with_us $!
done

key Home
begun=$(now)
key Return
within 60 window_is "Pagora - The Lantern Keeper"
within 120 sign_is_there
save_screen "$pictures/sign.png"
left=$(now)
key ctrl+w
within 60 window_is Pagora
back=$(now)

key Home
begun_again=$(now)
key Return
within 60 window_is "Pagora - The Lantern Keeper"
within 300 text_is_there
shown=$(now)
save_screen "$pictures/page.png"
echo "The sign was there after $((left - begun)) ms, the library $((back - left)) ms after the key; the page takes" \
    "$((shown - begun_again)) ms." | tee "$pictures/times.txt"
[ $((2 * (back - left))) -lt $((shown - begun_again)) ] || fail "the book could not be left while its page was loaded"
key ctrl+w
within 60 window_is Pagora
key ctrl+q
within 60 ended
program=
