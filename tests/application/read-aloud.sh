#!/usr/bin/env bash
# Assistive technology finds the book, the chapter and the text of the page, also after the page is turned.
set -euo pipefail
tests=$(cd "$(dirname "$0")" && pwd)
. "$(dirname "$0")/../../scripts/drive.sh"

# told NAME TEXT: whether the page has that name, and text that begins so.
told() { timeout 60 /usr/bin/python3 "$tests/page-text.py" | grep -A1 -xF "$1" | tail -1 | grep -q "^$2"; }

start_with 01 02
settle
key Right
settle
key Return
within 60 window_is "Pagora - A Quiet Harbour"
within 300 told "document text | A Quiet Harbour, 1. Temple and zephyr" "Temple and zephyr 1.1 Candle Ada measured"
key Right
within 300 told "document text | A Quiet Harbour, 1. Temple and zephyr" "copper magnet market"
picture read-aloud
key ctrl+w
within 20 window_is Pagora
key ctrl+q
within 20 ended
program=
