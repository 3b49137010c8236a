#!/usr/bin/env bash
# Books whose pages attack are opened; a key closes each, and another ends the program, with nothing of it left.
set -euo pipefail
. "$(dirname "$0")/../../scripts/drive.sh"

folder=$(dirname "$(realpath "$0")")
"$folder/make-hostile-books" "$HOME/hostile" "${@:3}" >/dev/null
PAGORA_PICTURE=$pictures/failed.png "$folder/hostile-pages.py" "$programs/pagora" "$HOME/hostile" | tee "$pictures/figures.txt"
