#!/usr/bin/env bash
# Checks the output of scripts/progress.sh for a step: progress.sh CASE
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'exec 3>&-; wait; rm -rf "$scratch"' EXIT
quiet_seconds=1
# shellcheck source=progress.sh
. "$here/../../scripts/progress.sh"

# A step with the output of this script.
mkfifo "$scratch/step"
filter() {
    case $1 in
    "at "*) progress=${1#at } ;;
    *) passed "$1" ;;
    esac
}
follow Step filter <"$scratch/step" >"$scratch/said" &
exec 3>"$scratch/step"
said() {
    local tries=300
    until grep -qxE "$1" "$scratch/said"; do
        [ $((tries--)) -gt 0 ] || { echo "nothing said: $1" && cat "$scratch/said" && exit 1; } >&2
        sleep 0.1
    done
}

case $1 in
silent)
    said 'Step: still running after [0-9]+ s'
    echo "at 40%" >&3
    said 'Step: 40%, still running after [0-9]+ s'
    ;;
passed)
    echo "at 40%" >&3
    said 'Step: 40%'
    echo "a warning" >&3
    said 'a warning'
    printf 'the end' >&3
    exec 3>&-
    said 'the end'
    ;;
esac
