#!/usr/bin/env bash
# Compiles the help pages once more, from a copy in another folder, and compares the files: reproducible.sh PAGES FILE
set -euo pipefail

copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
mkdir -p "$copy/elsewhere/of another length"
cp -r "$1" "$copy/elsewhere/of another length/help"
"$copy/elsewhere/of another length/help/compile.sh" "$copy/again.chm"
cmp "$2" "$copy/again.chm"
