#!/usr/bin/env bash
# Holds what ./package makes to what is said of it: handed_out.sh WHAT TREE PACKAGE-FOLDER
#   whole       the checksums are true and complete, and the zip has the files that the package has
#   repeatable  made once more it is the same, byte for byte
#   signed      signed with certificates made here, a PEM file and a .pfx file with a password: every signature holds, and
#               none holds over a changed file
set -euo pipefail

what=$1
tree=$(realpath "$2")
made=$(realpath "$3")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

complain() {
    echo "handed_out.sh: $*"
    exit 1
}

same_files() {
    diff -r "$1" "$2" || complain "$1 and $2 differ"
}

check_whole() {
    local listed there
    cd "$made"
    sha256sum --check --strict --quiet SHA256SUMS
    listed=$(cut -c 67- SHA256SUMS)
    there=$(find . -type f ! -name SHA256SUMS -printf '%P\n' | LC_ALL=C sort)
    [[ $listed == "$there" ]] || complain "listed is $listed, there is $there"
    mkdir "$work/zip" "$work/msi" "$work/flat"
    (cd "$work/zip" && unzip -q "$made"/SiteKeeper-*.zip)
    msiextract -C "$work/msi" SiteKeeper.msi >/dev/null
    same_files "$work/zip/policy" policy
    cmp "$work/zip/deploy.md" "$tree/docs/deploy.md"
    cmp "$work/zip/SiteKeeper.spdx.json" SiteKeeper.spdx.json
    mkdir "$work/flat/zip" "$work/flat/msi"
    find "$work/zip/program folder" "$work/zip/common files" -type f -exec cp -t "$work/flat/zip" {} +
    find "$work/msi" -type f -exec cp -t "$work/flat/msi" {} +
    same_files "$work/flat/zip" "$work/flat/msi"
}

check_repeatable() {
    # Not within the same second, and with another clock and mask.
    (umask 077 && TZ=Asia/Tokyo "$tree/package" --output "$work/again")
    same_files "$made" "$work/again"
}

make_certificate() {
    openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj '/CN=Site Keeper test' -addext 'extendedKeyUsage=codeSigning' \
        -keyout "$work/key.pem" -out "$work/certificate.pem" 2>/dev/null
    cat "$work/certificate.pem" "$work/key.pem" >"$work/both.pem"
    echo 'a password with blanks' >"$work/password"
    openssl pkcs12 -export -in "$work/certificate.pem" -inkey "$work/key.pem" -out "$work/both.pfx" \
        -passout "file:$work/password"
}

verify() {
    osslsigncode verify -CAfile "$work/certificate.pem" -in "$1" >"$work/verify.log" 2>&1
}

check_signatures() {
    local folder=$1 file
    mkdir "$folder/inside"
    msiextract -C "$folder/inside" "$folder/SiteKeeper.msi" >/dev/null
    while IFS= read -r file; do
        verify "$file" || { cat "$work/verify.log"; complain "the signature of $file does not hold"; }
        # A byte in the middle of it.
        cp "$file" "$work/changed"
        printf '\xff\x00\xff' | dd of="$work/changed" bs=1 seek=$(($(stat -c %s "$file") / 2)) conv=notrunc status=none
        ! verify "$work/changed" || complain "the signature of $file holds over a changed file"
    done < <(find "$folder" -name '*.exe' -o -name '*.dll' -o -name '*.msi')
    (($(find "$folder/inside" -name '*64.*' | wc -l) == 2)) || complain 'the files inside the package are not signed'
    "$tree/tests/package/check_winget.py" "$folder/winget" "$folder/SiteKeeper.msi"
    rm -r "$folder/inside"
}

check_signed() {
    make_certificate
    ! verify "$made/SiteKeeper.msi" || complain 'a package without a signature is taken for a signed one'
    "$tree/package" --sign "$work/both.pem" --output "$work/pem"
    check_signatures "$work/pem"
    "$tree/package" --sign "$work/both.pfx" --password-file "$work/password" --output "$work/pfx"
    check_signatures "$work/pfx"
    echo wrong >"$work/password"
    ! "$tree/package" --sign "$work/both.pfx" --password-file "$work/password" --output "$work/wrong" 2>&1 ||
        complain 'a wrong password is not noticed'
    [[ ! -e $work/wrong ]] || complain 'without the signature there is a package all the same'
}

"check_$what"
