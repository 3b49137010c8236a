#!/usr/bin/env bash
# On a busy machine a book is closed while its first page is loading. The page of the first book never loads. The page
# of a book that is not closed appears.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

now() { date +%s%3N; }
# long_books LONG ENDLESS: writes a book with a long first chapter, and one with an endless script in it.
long_books() {
    python3 - "$HOME/books/01 "*.epub "$1" "$2" <<'END'
import re, sys, zipfile
script = b"<script>while (true);</script>"
for number, path in enumerate(sys.argv[2:]):
    with zipfile.ZipFile(sys.argv[1]) as old, zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as new:
        for name in old.namelist():
            content = old.read(name)
            if name.endswith("chapter1.xhtml"):
                body = re.search(rb"<p.*</p>", content, re.S)[0]
                content = content.replace(body, script * number + body * (800_000 // len(body)))
            if number:
                content = content.replace(b"The Lantern Keeper", b"The Endless Watch")
            new.writestr(name, content)
END
}
text_is_there() { [ "$(colors 330 120 300 200)" -gt 20 ]; }
# The loading indicator is a dark disc in the middle of an empty page.
sign_is_there() { [ "$(colors 740 410 60 60)" -gt 4 ] && ! text_is_there; }

"$here/make-sample-books" "$HOME/books" >/dev/null
long_books "$HOME/01 Long.epub" "$HOME/02 Endless.epub"
start "$HOME/01 Long.epub" "$HOME/02 Endless.epub"
within 120 catalogue 'len(books) == 2'
within 60 window_is Pagora
fill
for _ in 1 2 3 4; do
    while :; do :; done &
    ends_with_us $!
done

# Closes the book whose page never loads.
key Home
key Right
begun=$(now)
key Return
within 60 window_is "Pagora - The Endless Watch"
within 120 sign_is_there
save_screen "$pictures/sign.png"
left=$(now)
key ctrl+w
within 60 window_is Pagora
back=$(now)
save_screen "$pictures/library.png"

# The page of the other book appears.
key Home
begun_again=$(now)
key Return
within 60 window_is "Pagora - The Lantern Keeper"
within 300 text_is_there
shown=$(now)
save_screen "$pictures/page.png"
echo "The sign was there after $((left - begun)) ms, the library $((back - left)) ms after the key; the page takes" \
    "$((shown - begun_again)) ms." | tee "$pictures/times.txt"
key ctrl+w
within 60 window_is Pagora
quit
