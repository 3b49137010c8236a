#!/usr/bin/env bash
# A book is read where WAYLAND_DISPLAY is the path of a socket outside XDG_RUNTIME_DIR.
set -euo pipefail
WAYLAND_DISPLAY=$(realpath "$XDG_RUNTIME_DIR/$WAYLAND_DISPLAY")
export WAYLAND_DISPLAY
. "$(dirname "$0")/../drive/drive.sh"

start_with 01 02
read_first "The Lantern Keeper"
turn Right
picture page
key ctrl+w
within 20 window_is Pagora
quit
