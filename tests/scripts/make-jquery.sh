#!/usr/bin/env bash
# Checks that resources/jquery/make-jquery rejects a local package that is not the pinned one.
set -euo pipefail
jquery=$(cd "$(dirname "$0")/../../resources/jquery" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

mkdir "$scratch/packages"
echo changed >"$scratch/packages/backbone-0.9.2.tgz"
if PAGORA_NPM_PACKAGES=$scratch/packages "$jquery/make-jquery" "$scratch/made" 2>"$scratch/said"; then
    echo "make-jquery.sh: a package with another sum was taken" >&2
    exit 1
fi
grep -q "backbone-0.9.2.tgz is not the package that is pinned" "$scratch/said"
[ ! -e "$scratch/made/jquery-1.7.1.min.js" ]
