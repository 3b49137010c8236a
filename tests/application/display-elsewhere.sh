#!/usr/bin/env bash
# A book is read where WAYLAND_DISPLAY is the path of a socket outside XDG_RUNTIME_DIR.
set -euo pipefail
WAYLAND_DISPLAY=$(realpath "$XDG_RUNTIME_DIR/$WAYLAND_DISPLAY")
export WAYLAND_DISPLAY
. "$(dirname "$0")/../drive/drive.sh"

start_with 01 02
settle
key Home
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
