#!/usr/bin/env bash
# Runs scripts/setup with a fake package system and checks its output and actions: setup.sh CASE
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
scripts=$(cd "$here/../../scripts" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export SETUP_LOG=$scratch/log SETUP_LOCKED=$scratch/locked SETUP_USER=0
: >"$SETUP_LOG"

fail() {
    echo "setup.sh: $1; it said:" >&2
    cat "$scratch/said" >&2
    exit 1
}
# run_setup PROGRAM...: runs scripts/setup with only these stand-ins and the basic tools.
run_setup() {
    mkdir "$scratch/programs"
    local program
    for program in bash sh env dirname sed awk grep mktemp rm cat sleep; do
        ln -s "$(command -v "$program")" "$scratch/programs/$program"
    done
    for program in "$@"; do
        ln -s "$here/setup/$program" "$scratch/programs/$program"
    done
    status=0
    PATH=$scratch/programs "$scripts/setup" >"$scratch/said" 2>&1 || status=$?
}
said() { grep -q "$1" "$scratch/said" || fail "nothing said: $1"; }
did() { grep -q "$1" "$SETUP_LOG" || fail "nothing did: $1"; }

case $1 in
progress)
    run_setup id dpkg-query apt-get
    [ "$status" = 0 ] || fail "it failed"
    said '^Packages: installing .*cmake'
    said '^Packages: 50% Unpacking cmake'
    ! grep -q Selecting "$scratch/said" || fail "it shows what only the package system has to say"
    did '^0 apt-get update'
    did '^0 apt-get install .*cmake'
    ;;
locked)
    echo 2 >"$SETUP_LOCKED"
    run_setup id dpkg-query apt-get
    [ "$status" = 0 ] || fail "it failed"
    said '^Packages: another program, process 4711 (apt-get), is installing packages; waiting until it is done$'
    did 'apt-get install'
    ;;
sudo)
    export SETUP_USER=1000
    run_setup id dpkg-query apt-get sudo
    [ "$status" = 0 ] || fail "it failed"
    did '^sudo apt-get install .*cmake'
    ;;
helpless)
    export SETUP_USER=1000
    run_setup id dpkg-query apt-get
    [ "$status" = 1 ] || fail "it did not fail"
    said 'only root can install packages'
    said 'apt-get install .*cmake'
    [ ! -s "$SETUP_LOG" ] || fail "it tried nevertheless"
    ;;
broken)
    export SETUP_BROKEN=1
    run_setup id dpkg-query apt-get
    [ "$status" = 1 ] || fail "it did not fail"
    said 'E: Unable to locate package'
    ;;
esac
