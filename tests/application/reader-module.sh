#!/usr/bin/env bash
# The program starts without the page engine's libraries, loads them when the library is shown, and reports a missing
# module.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

engine_is_loaded() { grep -q libwebkitgtk "/proc/$program/maps"; }
told() { grep -q "^.*Pagora is not installed completely" "$HOME/said"; }

! ldd "$programs/pagora" | grep libwebkitgtk || fail "the program needs the page engine to start"

start_with 01 02
within 20 engine_is_loaded
quit

mkdir "$HOME/incomplete"
cp "$programs/pagora" "$programs/pagora-inspect" "$programs/pagora-picture" "$HOME/incomplete"
programs=$HOME/incomplete start 2>"$HOME/said"
within 60 told
within 20 ended
! wait "$program" || fail "the program goes on without its module"
program=
