#!/usr/bin/env bash
# With a right-to-left language the layout and the keys are mirrored; page turns are not.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"
. "$here/drive-names.sh"

mirror
start_with 01 02
fill
settle
# The next book is to the left of the first.
key Home Left
settle
picture library
key Return
reads "A Quiet Harbour"
fill
settle
picture page
turn Right
turn Left
# Returns to the library with the button at the other end of the title bar.
press "Back to the library" button
within 20 window_is Pagora
quit
