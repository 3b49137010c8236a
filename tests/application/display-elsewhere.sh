#!/usr/bin/env bash
# The socket of the Wayland display lies outside of the person's runtime folder, and is given by its path: a book is read.
set -euo pipefail
WAYLAND_DISPLAY=$(realpath "$XDG_RUNTIME_DIR/$WAYLAND_DISPLAY")
export WAYLAND_DISPLAY
. "$(dirname "$0")/../drive/drive.sh"

start_with 01
settle
key Right
settle
key Return
reads "The Lantern Keeper"
turn Right
picture page
key ctrl+w
within 20 window_is Pagora
key ctrl+q
within 20 ended
wait "$program" || fail "the program ended with $?"
program=
