#!/usr/bin/env bash
# A save leaves a file's access rights as they were, seen from the Unix side: file_mode.sh WINE-RUN STORE-SAVER
# Wine's rights know the owner and everyone, and always let the owner's group in with the owner.
set -euo pipefail

wine_run=$1
saver=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
file=$folder/Store.ini

fail() {
    echo "failed: a file of mode $1" >&2
    exit 1
}

umask 022
for mode in 600 640 660 644 664 666 646; do
    echo 'old' >"$file"
    chmod "$mode" "$file"
    number=$(stat -c %i "$file")
    "$wine_run" "$saver" once "Z:${file//\//\\}" 10
    [[ $(grep -c Key "$file") == 10 ]] || fail "$mode was not saved"
    # Otherwise the file was written over, and its mode proves nothing.
    [[ $(stat -c %i "$file") != "$number" ]] || fail "$mode was not replaced"
    new=$(stat -c %a "$file")
    (((0$new & 0606) == (0$mode & 0606))) || fail "$mode became $new"
    [[ $mode != 644 || $new == 644 ]] || fail "$mode, as new files have it, became $new"
    [[ $(ls "$folder") == Store.ini ]] || fail "$mode left something behind"
    rm "$file"
done
echo 'the owner may what the owner might, and everyone what everyone might'
