#!/usr/bin/env bash
# The accessible tree has the book, the chapter and the text of the page, also after a page turn.
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
. "$(dirname "$0")/../drive/drive.sh"

# told NAME TEXT: succeeds if the page has this name and a text with this prefix.
told() { text "$1" | grep -q "^$2"; }
# told_other NAME TEXT: succeeds if the page has this name and a text without this prefix.
told_other() { text "$1" | grep -v "^$2" | grep -q .; }
text() { timeout 60 /usr/bin/python3 "$tests/page-text.py" | grep -A1 -xF "$1" | tail -1; }

start_with 01 02
settle
# The first arrow key goes to the books, and further ones stop at the last.
key Right
settle
key Right
settle
key Return
within 60 window_is "Pagora - A Quiet Harbour"
within 60 told "document text | A Quiet Harbour, 1. Temple and zephyr" "Temple and zephyr 1.1 Candle Ada measured"
key Right
within 60 told_other "document text | A Quiet Harbour, 1. Temple and zephyr" "Temple and zephyr"
picture read-aloud
key ctrl+w
within 20 window_is Pagora
quit
