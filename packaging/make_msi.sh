#!/usr/bin/env bash
# Makes the package of the files in a folder: make_msi.sh VERSION EPOCH FOLDER PACKAGE.msi
# The folder holds SiteKeeper64.exe, ORSWDialogsOEM64.dll and SiteKeeper.chm. The version is the product's, EPOCH (seconds)
# the date that the files have in the package. The same version, date and files give the same bytes.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
version=$1
epoch=$2
files=$(realpath "$3")
package=$(realpath -m "$4")
# What identities are formed in.
namespace=7a0b5e64-3c1d-4b6f-9e0a-5d2c81f4a937

# A GUID that belongs to a name, the same each time.
guid() {
    python3 -c 'import sys, uuid; print(uuid.uuid5(uuid.UUID(sys.argv[1]), sys.argv[2]))' "$namespace" "$1"
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# wixl looks for files beside its source, and gives them the dates and the places of here.
export TZ=UTC
cp "$files"/{SiteKeeper64.exe,ORSWDialogsOEM64.dll,SiteKeeper.chm} "$here/SiteKeeper.wxs" \
    "$here/../src/res/site-keeper.ico" "$work"
chmod 644 "$work"/*
touch -d "@$epoch" "$work"/*
cd "$work"

# The product's code changes with its version, the package's with anything in it.
product_code=$(guid "product $version")
content=$(cat ./*.{exe,dll,chm,ico,wxs} "$here/finish_msi.py" | sha256sum | cut -d ' ' -f 1)
package_code=$(guid "package $version $epoch $content")

wixl -a x64 -D Version="$version" -D ProductCode="${product_code^^}" -o package.msi SiteKeeper.wxs
"$here/finish_msi.py" package.msi --files "$work" --package-code "$package_code" --epoch "$epoch"
mkdir -p "${package%/*}"
mv package.msi "$package"
