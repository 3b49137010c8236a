#!/usr/bin/env bash
# Opens books with hostile pages. A key closes each book, and another key ends the program with all its processes.
set -euo pipefail
. "$(dirname "$0")/../drive/drive.sh"

# One attack of each kind; all books if "all" follows the folder of pictures.
attacks=("addresses" "alerts" "blobs" "filter" "focus" "loop at the end" "programs" "slow frames" "steps to servers" "table" "workers")
[ "${3:-}" != all ] || attacks=()
folder=$(dirname "$(realpath "$0")")
"$folder/make-hostile-books" "$HOME/hostile" "${attacks[@]}" >/dev/null
PAGORA_PICTURE=$pictures/failed.png "$folder/hostile-pages.py" "$programs/pagora" "$HOME/hostile" | tee "$pictures/figures.txt"
