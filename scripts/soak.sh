#!/usr/bin/env bash
# Lives with the program for a long time: scripts/soak.sh [MINUTES [SEED]]
# Opens and closes each window a thousand times, drags ten thousand names, then makes random but legal gestures on the
# shipped program for MINUTES (60 when left out); SEED, chosen by the clock when left out, makes them the same again.
# $SITEKEEPER_OPENINGS, $SITEKEEPER_DRAGS and $SITEKEEPER_GESTURES change the numbers; logs are in build/log/.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/common.sh
source "$here/common.sh"
# shellcheck source=scripts/packages.sh
source "$here/packages.sh"
# shellcheck source=scripts/build.sh
source "$here/build.sh"
# shellcheck source=scripts/wine-prefix.sh
source "$here/wine-prefix.sh"
# shellcheck source=scripts/screen.sh
source "$here/screen.sh"

minutes=${1:-60}
seed=${2:-$(date +%s)}
prefix=${SITEKEEPER_WINEPREFIX:-$wine_dir/soak}
openings_log=$log_dir/soak-openings.log
gestures_log=$log_dir/soak-gestures.log
shots=$build_dir/soak
broken=no

build_all() {
    build_preset mingw-debug keeper ui_long_use_test
    build_preset mingw-release sitekeeper_soak
}

make_prefix() {
    ensure_template
    [[ -d $prefix ]] || clone_template "$prefix"
}

in_soak_prefix() {
    SITEKEEPER_WINEPREFIX=$prefix SITEKEEPER_WINE_TIMEOUT=$1 "$root/scripts/wine-run" "${@:2}"
}

# On the screen that Wine has when there is none, as in ./test.
open_and_drag() {
    unset DISPLAY
    SITEKEEPER_OPENINGS=${SITEKEEPER_OPENINGS:-1000} SITEKEEPER_DRAGS=${SITEKEEPER_DRAGS:-10000} \
        SITEKEEPER_TEST_SECONDS=7200 in_soak_prefix 36000 "$build_dir/mingw-debug/tests/ui/ui_long_use_test.exe"
}

make_gestures() {
    SITEKEEPER_MINUTES=$minutes SITEKEEPER_SEED=$seed SITEKEEPER_SHOTS=Z:${shots//\//\\} \
        in_soak_prefix $((minutes * 60 + 600)) "$build_dir/mingw-release/tests/e2e/sitekeeper_soak.exe"
}

# As attempt, and what failed is remembered.
try() {
    attempt "$@"
    ((job_rc == 0)) || broken=yes
}

# What a log says in figures, without the carriage returns of Windows.
say_figures() {
    tr -d '\r' <"$2" | grep -E "$1" || true
}

main() {
    if [[ ! $minutes =~ ^[1-9][0-9]*$ || ! $seed =~ ^[0-9]+$ ]]; then
        echo 'usage: scripts/soak.sh [MINUTES [SEED]]' >&2
        exit 2
    fi
    tidy_up_at_exit
    lock_for "$wine_dir/soak.lock" 'another scripts/soak.sh is under way'
    ensure_packages "$run_packages$test_packages"
    mkdir -p "$shots"
    prefixes+=("$prefix")
    step 'Building' "$log_dir/soak-build.log" build_all
    step 'Wine prefix' "$log_dir/soak-build.log" make_prefix
    start_keeper "$prefix" "$build_dir/mingw-debug/demo/keeper.exe" "$log_dir/keeper.log" ||
        fail "Wine does not start: $(shown "$log_dir/keeper.log")"
    try 'Windows opened, names dragged' "$openings_log" open_and_drag
    say_figures ' times: before ' "$openings_log"
    stop_wine "$prefix" # the keeper lives where there is no screen
    start_screen
    start_keeper "$prefix" "$build_dir/mingw-debug/demo/keeper.exe" "$log_dir/keeper.log" ||
        fail "Wine does not start: $(shown "$log_dir/keeper.log")"
    try "Random gestures, $minutes min" "$gestures_log" make_gestures
    [[ $broken == no ]] || echo "Logs: $(shown "$openings_log"), $(shown "$gestures_log"); pictures: $(shown "$shots")"
    say_figures '^[0-9]+ runs of the program' "$gestures_log"
    say_figures '^[0-9]+ gestures, seed ' "$gestures_log"
    [[ $broken == no ]]
}

main
