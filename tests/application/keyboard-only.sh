#!/usr/bin/env bash
# From the launch to a chapter and back, by keyboard only.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

start_with 01 02
settle

# The first arrow key goes to the books, and further ones stop at the last.
key Right
settle
key Right
settle
picture selected
key Return
reads "A Quiet Harbour"
# Turns from the end of the first chapter to the second.
turn End
turn Right
turn space
picture read
key F9
picture contents
key ctrl+w
within 20 window_is Pagora
within 20 catalogue 'any(book["Title"] == "A Quiet Harbour" and book["LastInd"] == 1 and book.get("LastPlace", 0) > 0 for book in books)'
quit
