#!/usr/bin/env bash
# If namespaces are forbidden, so that the page engine cannot confine its processes, the program starts, its library
# works, a book is read page by page, and one line says that the book's own scripts are disabled.
set -euo pipefail

# The rest runs in a namespace that forbids further namespaces, or directly if the system forbids them.
if [ -z "${PAGORA_FORBIDDEN:-}" ] && unshare --user true 2>/dev/null; then
    exec unshare --user --map-current-user --keep-caps env PAGORA_FORBIDDEN=1 bash -euc '
        for kind in mnt pid net user; do echo 0 >"/proc/sys/user/max_${kind}_namespaces"; done
        exec setpriv --inh-caps=-all --ambient-caps=-all "$@"' unconfined "$0" "$@"
fi
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"

! bwrap --ro-bind / / true 2>/dev/null || fail "namespaces are not forbidden"

# Writes a book with a script that would remove its text.
scripted_book() {
    python3 - "$books/01 "*.epub "$1" <<'END'
import sys, zipfile
script = '<script>document.documentElement.remove()</script></body>'
with zipfile.ZipFile(sys.argv[1]) as old, zipfile.ZipFile(sys.argv[2], "w") as new:
    for name in old.namelist():
        content = old.read(name)
        if name.endswith("html"):
            content = content.replace(b"</body>", script.encode())
        new.writestr(name, content)
END
}

books=$HOME/books
"$here/make-sample-books" "$books" >/dev/null
scripted_book "$HOME/Scripted.epub"
start "$HOME/Scripted.epub" "$books/02 "*.epub
within 60 catalogue 'len(books) == 2'
within 60 window_is Pagora
fill
picture library

read_first "The Lantern Keeper"
fill
within 60 page_is_drawn
picture page
turn Right
turn Right
# The line has an explanation.
press "Read more" button
picture explanation
key Escape
turn Right
picture turned
kill -0 "$program" 2>/dev/null || fail "the program has ended"

key ctrl+w
within 20 window_is Pagora
quit
