#!/usr/bin/env bash
# In a language that is written from right to left the program lies and is worked with that way; pages turn as ever.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"

mirror
start_with 01 02
fill
settle
# The next book is to the left of the first.
key Left
settle
picture library
key Return
reads "A Quiet Harbour"
fill
settle
picture page
turn Right
turn Left
# Back to the library, at the other end of the title bar.
press "Back to the library" button
within 20 window_is Pagora
key ctrl+q
within 20 ended
program=
