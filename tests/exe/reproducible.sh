#!/usr/bin/env bash
# Builds the shipped files once more, from a copy of the tree in another folder, and compares them byte for byte.
# reproducible.sh TREE FILE…
set -euo pipefail

tree=$1
shift
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT

mkdir "$copy/tree"
tar -C "$tree" -cf - CMakeLists.txt CMakePresets.json cmake help src scripts tools | tar -C "$copy/tree" -xf -
cd "$copy/tree"
# A cached object of the other folder would prove nothing.
export CCACHE_DISABLE=1
cmake --preset mingw-release -DSITEKEEPER_TESTS=OFF -DSITEKEEPER_BENCH=OFF >"$copy/log" 2>&1 || { cat "$copy/log"; exit 1; }
targets=()
for file in "$@"; do
  targets+=("$(basename "${file%.*}")")
done
cmake --build --preset mingw-release --target "${targets[@]}" >"$copy/log" 2>&1 || { tail -n 20 "$copy/log"; exit 1; }

for file in "$@"; do
  cmp "$file" "build/mingw-release/$(basename "$file")"
done
echo "the same bytes from two folders: ${targets[*]}"
