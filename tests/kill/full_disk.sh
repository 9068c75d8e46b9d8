#!/usr/bin/env bash
# Saves ever larger files on a small disk until it is full: full_disk.sh WINE-RUN STORE-SAVER
# What was there must stay whole, whether there is room for a neighbour or not. Skipped where no disk can be mounted.
set -euo pipefail

wine_run=$1
saver=$2
skipped=77
disk=$(mktemp -d)
own_prefix=

# A name space of its own sees no Wine server from outside, so it brings a prefix too.
if ! mount -t tmpfs -o size=1m none "$disk" 2>/dev/null; then
    rmdir "$disk"
    if [[ -z ${SITEKEEPER_DISK_NAMESPACE:-} ]] && unshare -rm true 2>/dev/null; then
        exec env SITEKEEPER_DISK_NAMESPACE=yes unshare -rm "$0" "$@"
    fi
    echo 'skipped: no file system can be mounted here'
    exit "$skipped"
fi
if [[ -n ${SITEKEEPER_DISK_NAMESPACE:-} ]]; then
    own_prefix=$(mktemp -d)
    export SITEKEEPER_WINEPREFIX=$own_prefix/prefix
fi

tidy_up() {
    if [[ -n $own_prefix ]]; then
        WINEPREFIX=$SITEKEEPER_WINEPREFIX wineserver -k || true
        rm -rf "$own_prefix"
    fi
    umount "$disk"
    rmdir "$disk"
    rm -f "$disk.old"
}
trap tidy_up EXIT

file=$disk/Store.ini
neighbour=$disk/Store.in~

fail() {
    echo "failed: $*" >&2
    ls -l "$disk" >&2
    exit 1
}

# save ENTRIES CODE: saves so many entries, which must end with that code.
save() {
    local code=0
    "$wine_run" "$saver" once "Z:${file//\//\\}" "$1" || code=$?
    [[ $code == "$2" ]] || fail "$1 entries: code $code instead of $2"
}

# The file stays as it was, to the byte, and nothing else is left but what was there.
expect_untouched() {
    cmp "$file" "$disk.old" || fail "$1: the file is not the old one"
    [[ $(LC_ALL=C ls "$disk") == "$2" ]] || fail "$1: something was left"
}

# fill BYTES_LEFT: takes all room but that.
fill() {
    local free
    free=$(($(stat -f -c '%a * %S' "$disk")))
    head -c $((free - $1)) /dev/zero >"$disk/filler"
}

# Ever larger, until the neighbour has no room beside the file.
entries=100
while
    code=0
    "$wine_run" "$saver" once "Z:${file//\//\\}" "$entries" || code=$?
    [[ $code == 0 ]]
do
    cp "$file" "$disk.old"
    entries=$((entries + 250))
    ((entries < 10000)) || fail 'the disk is never full'
done
echo "code $code at $entries entries, $(stat -c %s "$file") bytes before"
[[ $code == 3 && -s $disk.old ]] || fail "code $code at $entries entries"
expect_untouched 'growing' Store.ini

# No room at all, and then room again.
fill 0
save "$entries" 3
expect_untouched 'no room' $'Store.ini\nfiller'
save 50 3 # smaller, but a neighbour needs room of its own
expect_untouched 'no room for less' $'Store.ini\nfiller'
rm "$disk/filler"
save 50 0
[[ $(grep -c Key "$file") == 50 ]] || fail 'the save after the full disk'
[[ $(LC_ALL=C ls "$disk") == Store.ini ]] || fail 'the save after the full disk left something'

# Where no neighbour can be made, the file is written over, and its old content put back.
mkdir "$neighbour"
save 250 0
cp "$file" "$disk.old"
fill 8192
save 750 3
expect_untouched 'in place' $'Store.ini\nStore.in~\nfiller'
rm "$disk/filler"
save 750 0
[[ $(grep -c Key "$file") == 750 ]] || fail 'the save in place after the full disk'
echo 'the old file was whole each time'
