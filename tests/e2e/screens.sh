#!/usr/bin/env bash
# Pictures of the program's windows at 96, 120, 144 and 192 dpi, with large text and with high-contrast colours, for
# looking at: tests/e2e/screens.sh [FOLDER [LOOK...]]. A look is a number of dpi or a name of looks/*.reg.
# FOLDER (build/screens when left out) gets NAME-LOOK.png for each moment that the end-to-end suite keeps, the focus on
# its way through the main dialog, and the open menus. Needs the mingw-release build, or the folder of one in
# $SITEKEEPER_SCREENS_BUILD. The exit code is 1 when a look broke.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=scripts/common.sh
source "$here/../../scripts/common.sh"
# shellcheck source=scripts/wine-prefix.sh
source "$here/../../scripts/wine-prefix.sh"
# shellcheck source=scripts/screen.sh
source "$here/../../scripts/screen.sh"

programs=${SITEKEEPER_SCREENS_BUILD:-$build_dir/mingw-release}
shots=${1:-$build_dir/screens}
looks=("${@:2}")
((${#looks[@]} > 0)) || looks=(96 120 144 192 large-text high-contrast)
moments='Start.ShowsTheThree*:Browse.TypedText*:Failure.Without*:Library.IsMissing*:Library.CannotBe*'
moments+=':Gate.AUserWithout*:*BadDate.*/0:UserAccess.NamesAre*:UserAccess.AHundred*'
moments+=':TrustedPaths.*:OemInstaller.*:Shortcuts.*:Uninstall.*:About.*:Print.WithoutAPrinter*:PrintedReport.OnOnePage'
moments+=':*/Help.Shows*/Button:*/Help.Says*/Button'

windows_path() {
    echo "Z:${1//\//\\}"
}

to_png() {
    local bmp
    for bmp in "$1"/*.bmp; do
        /usr/bin/convert "$bmp" "$shots/$(basename "$bmp" .bmp)-$2.png"
    done
}

main_window_stands() {
    /usr/bin/import -window root png:- | /usr/bin/convert png:- -format '%k' info: | grep -qvx 1 &&
        xdotool search --onlyvisible --name '^ $' >/dev/null 2>&1
}

# The menus open for the screen's own keys, not for posted messages.
shoot_menus() {
    local prefix=$1 look=$2 control
    mkdir -p "$prefix/drive_c/Program Files/Common Files/ORIVEL"
    cp "$programs/ORSWDialogsOEM64.dll" "$prefix/drive_c/Program Files/Common Files/ORIVEL/"
    cp "$programs/SiteKeeper64.exe" "$prefix/drive_c/"
    start_job "$log_dir/screens.log" in_prefix "$prefix" timeout 60 wine 'C:\SiteKeeper64.exe'
    await 20 main_window_stands || fail 'the main window does not come'
    for control in cancel program-path open-program; do
        xdotool key Tab sleep 0.5
        /usr/bin/import -window root "$shots/focus-$control-$look.png"
    done
    xdotool key alt+e sleep 0.7
    /usr/bin/import -window root "$shots/menu-edit-$look.png"
    xdotool key Escape sleep 0.2 key Escape sleep 0.2 key alt+space sleep 0.7
    /usr/bin/import -window root "$shots/menu-system-$look.png"
}

put_on() {
    local prefix=$1 look=$2
    if [[ -f $here/looks/$look.reg ]]; then
        import_registry "$prefix" "$here/looks/$look.reg"
    else
        wine_tool "$prefix" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$look" /f
    fi
    stop_wine "$prefix" # the server reads these values when it starts
}

shoot() {
    local look=$1 prefix=$wine_dir/screens-$1 raw
    prefixes+=("$prefix")
    clone_template "$prefix"
    put_on "$prefix" "$look"
    raw=$(mktemp -d)
    SITEKEEPER_SHOTS=$(windows_path "$raw") in_prefix "$prefix" timeout 300 \
        wine "$programs/tests/e2e/sitekeeper_e2e.exe" --gtest_filter="$moments"
    # The update reminder's and the splash, beside the page.
    SITEKEEPER_SHOTS=$(windows_path "$raw") in_prefix "$prefix" timeout 300 \
        "$here/../support/web_server.py" --port "${SITEKEEPER_LOOPBACK_PORT:-28417}" wine "$programs/tests/e2e/sitekeeper_e2e_updates.exe"
    to_png "$raw" "$look"
    rm -rf "$raw"
    shoot_menus "$prefix" "$look"
    stop_wine "$prefix"
}

tidy_up_at_exit
mkdir -p "$shots" "$log_dir"
ensure_template
screen_size=2560x1600 start_screen # at 192 dpi the windows need the room
broken=no
for look in "${looks[@]}"; do
    attempt "Pictures, $look" "$log_dir/screens.log" shoot "$look"
    ((job_rc == 0)) || broken=yes
done
echo "Pictures: $(shown "$shots")"
[[ $broken == no ]]
