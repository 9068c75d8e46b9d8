#!/usr/bin/env bash
# Pictures of the program's windows at 96 and 144 dpi, for looking at: tests/e2e/screens.sh [FOLDER]
# FOLDER (build/screens when left out) gets NAME-DPI.png for each moment that the end-to-end suite keeps, and the open
# menus. Needs the mingw-release build.
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
moments='Start.ShowsTheThree*:Start.TheSplash*:Browse.TypedText*:Failure.Without*:Library.IsMissing*:Library.CannotBe*'
moments+=':Gate.AUserWithout*:*BadDate.*/0:Look.TheProgress*:UserAccess.NamesAre*:UserAccess.AHundred*'
moments+=':TrustedPaths.*:OemInstaller.*:Shortcuts.*:Uninstall.*:About.*:Print.WithoutAPrinter*:PrintedReport.OnOnePage'
moments+=':*/Help.Shows*/Button:*/Help.Says*/Button'

windows_path() {
    echo "Z:${1//\//\\}"
}

to_png() {
    local bmp
    for bmp in "$1"/*.bmp; do
        convert "$bmp" "$shots/$(basename "$bmp" .bmp)-$2.png"
    done
}

main_window_stands() {
    import -window root png:- | convert png:- -format '%k' info: | grep -qvx 1 &&
        xdotool search --onlyvisible --name '^ $' >/dev/null 2>&1
}

# The menus open for the screen's own keys, not for posted messages.
shoot_menus() {
    local prefix=$1 dpi=$2
    mkdir -p "$prefix/drive_c/Program Files/Common Files/ORIVEL"
    cp "$programs/ORSWDialogsOEM64.dll" "$prefix/drive_c/Program Files/Common Files/ORIVEL/"
    cp "$programs/SiteKeeper64.exe" "$prefix/drive_c/"
    start_job "$log_dir/screens.log" in_prefix "$prefix" timeout 60 wine 'C:\SiteKeeper64.exe'
    await 20 main_window_stands || fail 'the main window does not come'
    xdotool key alt+e sleep 0.7
    import -window root "$shots/menu-edit-$dpi.png"
    xdotool key Escape sleep 0.2 key Escape sleep 0.2 key alt+space sleep 0.7
    import -window root "$shots/menu-system-$dpi.png"
}

shoot() {
    local dpi=$1 prefix=$wine_dir/screens-$1 raw
    prefixes+=("$prefix")
    clone_template "$prefix"
    wine_tool "$prefix" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f
    stop_wine "$prefix" # the server reads the resolution when it starts
    raw=$(mktemp -d)
    SITEKEEPER_SHOTS=$(windows_path "$raw") in_prefix "$prefix" timeout 300 \
        wine "$programs/tests/e2e/sitekeeper_e2e.exe" --gtest_filter="$moments"
    # The update reminder's, beside its page.
    SITEKEEPER_SHOTS=$(windows_path "$raw") in_prefix "$prefix" timeout 300 \
        "$here/../support/web_server.py" --port 28417 wine "$programs/tests/e2e/sitekeeper_e2e_updates.exe"
    to_png "$raw" "$dpi"
    rm -rf "$raw"
    shoot_menus "$prefix" "$dpi"
    stop_wine "$prefix"
}

tidy_up_at_exit
mkdir -p "$shots" "$log_dir"
ensure_template
start_screen
for dpi in 96 144; do
    attempt "Pictures at $dpi dpi" "$log_dir/screens.log" shoot "$dpi"
done
echo "Pictures: $(shown "$shots")"
