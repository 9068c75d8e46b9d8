#!/usr/bin/env bash
# Compiles the help pages beside this script: compile.sh FILE.chm
# The same pages give the same bytes, whenever and wherever they are compiled.
set -euo pipefail

pages=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
compiled=$(realpath -m "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The compiler writes beside the pages, and whatever path it is given could end up in the file.
cp -r "$pages"/. "$work"
cd "$work"
if ! chmcmd SiteKeeper.hhp >compiler.log 2>&1; then
    cat compiler.log >&2
    echo "compile.sh: the help pages do not compile" >&2
    exit 1
fi
# A missing style sheet or page is only a warning to the compiler.
if grep -qi warning compiler.log; then
    cat compiler.log >&2
    exit 1
fi
# The moment of compiling stands in the header and once more before the compiler's name.
# shellcheck disable=SC2016 # perl's own variables
perl -0777 -i -pe '
    substr($_, 0x10, 4) = "\x01\0\0\0";
    s/(\x0a\0\x04\0)....(?=\x09\0..HHA Version)/$1\x01\0\0\0/s or die "no time stamp before the compiler\x27s name\n";
' SiteKeeper.chm
mv SiteKeeper.chm "$compiled"
