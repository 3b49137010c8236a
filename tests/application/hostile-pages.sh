#!/usr/bin/env bash
# Books whose pages attack are opened; a key closes each, and another ends the program, with nothing of it left.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

# One of each kind; with "all" after the folder of pictures, every one there is.
attacks=("addresses" "alerts" "blobs" "filter" "focus" "loop at the end" "programs" "slow frames" "steps to servers" "table" "workers")
[ "${3:-}" != all ] || attacks=()
folder=$(dirname "$(realpath "$0")")
"$folder/make-hostile-books" "$HOME/hostile" "${attacks[@]}" >/dev/null
PAGORA_PICTURE=$pictures/failed.png "$folder/hostile-pages.py" "$programs/pagora" "$HOME/hostile" | tee "$pictures/figures.txt"
