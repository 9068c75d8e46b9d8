#!/usr/bin/env bash
# The pictures of the help pages, taken from the end-to-end journeys: pictures.sh [--check] BUILD
# BUILD is a mingw-release build with its tests; a screen (DISPLAY) is needed. With --check the pictures stay as they are,
# and the exit code says whether they still show the program. (The build needs all pictures: a new one begins as any other.)
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(dirname "$here")

checking=no
if [[ ${1:-} == --check ]]; then
    checking=yes
    shift
fi
journeys=$(realpath "${1:?the build folder is missing}")/tests/e2e
[[ -n ${DISPLAY:-} ]] || { echo 'pictures.sh: there is no screen to take them from' >&2; exit 2; }

# Picture, journey, the moment in it that is kept, and the size to which a window is brought that would not fit beside
# the text.
own='
main-window       Start.ShowsTheThreeFoldersOfTheInstallation              main-dialog            65%
manage-shortcuts  Shortcuts.ChosenOnesAreEmptyUntilTheNextOkMakesThemReal  manage-shortcuts       65%
user-access       UserAccess.NamesAreDraggedBetweenTheLists                user-access-arranged   65%
trusted-paths     TrustedPaths.AProductGetsTheFiveFolders                  trusted-paths-message  100%
about             About.TellsProgramSuiteUpdateAndCopyright                about-update           65%
'
beside_server='
update-question   UpdateReminder.YesOpensThePage                           update-question        100%
'

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export SITEKEEPER_SHOTS="Z:${work//\//\\}"

# A moment is kept with its surroundings, which the pages do not want.
surroundings=24

# Rounding may differ a little from machine to machine; a changed word does not get through.
colour_tolerance=25%
pixels_per_ten_thousand=2

filter() {
    awk 'NF { printf "%s%s", colon, $2; colon = ":" }' <<<"$1"
}

run_journeys() {
    "$root/scripts/wine-run" "$journeys/sitekeeper_e2e.exe" --gtest_filter="$(filter "$own")"
    "$root/tests/support/web_server.py" --port "${SITEKEEPER_LOOPBACK_PORT:-28417}" \
        "$root/scripts/wine-run" "$journeys/sitekeeper_e2e_updates.exe" --gtest_filter="$(filter "$beside_server")"
}

is_current() {
    local kept=$1 fresh=$2 kept_size fresh_size differing
    kept_size=$(/usr/bin/identify -format '%wx%h' "$kept")
    fresh_size=$(/usr/bin/identify -format '%wx%h' "$fresh")
    if [[ $kept_size != "$fresh_size" ]]; then
        echo "$kept is $kept_size, the program now gives $fresh_size"
        return 1
    fi
    differing=$(/usr/bin/compare -metric AE -fuzz "$colour_tolerance" "$kept" "$fresh" null: 2>&1) || true
    if ((differing * 10000 > pixels_per_ten_thousand * ${kept_size%x*} * ${kept_size#*x})); then
        echo "$kept no longer shows the program: $differing pixels differ"
        return 1
    fi
}

if ! run_journeys >"$work/journeys.log" 2>&1; then
    cat "$work/journeys.log" >&2
    exit 1
fi
code=0
while read -r picture _ moment size; do
    [[ -n $picture ]] || continue
    fresh=$work/$picture.png
    /usr/bin/convert "$work/$moment.bmp" -shave "${surroundings}x$surroundings" +repage -filter Lanczos -resize "$size" \
        -strip -define png:compression-level=9 "PNG24:$fresh"
    if [[ $checking == no ]]; then
        cp "$fresh" "$here/pictures/"
    elif ! is_current "$here/pictures/$picture.png" "$fresh"; then
        code=1
    fi
done <<<"$own$beside_server"
if ((code != 0)); then
    echo 'Look at the program, then take the pictures anew: help/pictures.sh BUILD'
fi
exit "$code"
