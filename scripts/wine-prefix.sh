# shellcheck shell=bash
# Wine prefixes: one template, made once, and hard-linked clones of it. Sourced, never run; needs common.sh.
# shellcheck disable=SC2154 # common.sh sets the places

wine_dir=$build_dir/wine
template=$wine_dir/template

# --- running in a prefix ---------------------------------------------------------------------------------------

# Where Linux lays memory out at random, one start in some thousands finds the place taken that Windows programs share
# with the system, and Wine ends the program before it begins. A container may forbid the other layout.
wine_layout=()
if setarch -R true 2>/dev/null; then
    wine_layout=(setarch -R)
fi

# in_prefix PREFIX COMMAND...: a home of its own, so that nothing of Wine's lands in the user's; no questions about
# Mono or Gecko; no menu entries written beside shortcuts; the same language everywhere.
in_prefix() {
    local prefix=$1
    shift
    mkdir -p "$wine_dir/home"
    env WINEPREFIX="$prefix" WINEARCH=win64 WINEDEBUG="${WINEDEBUG:--all}" \
        WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml,winemenubuilder.exe=}" \
        XAUTHORITY="${XAUTHORITY:-${HOME:-/nonexistent}/.Xauthority}" HOME="$wine_dir/home" LC_ALL=C.UTF-8 \
        "${wine_layout[@]}" "$@"
}

# For the programs that set a prefix up; a forgotten dialog of theirs must not wait for ever.
wine_tool() {
    local prefix=$1
    shift
    in_prefix "$prefix" timeout --foreground -k 10 120 wine "$@"
}

import_registry() {
    wine_tool "$1" regedit /S "Z:${2//\//\\}"
}

# Processes of a prefix, however they came to run. Their environment names the prefix.
wine_processes() {
    grep -lzxsF "WINEPREFIX=$1" /proc/[0-9]*/environ | cut -d / -f 3
}

no_wine_processes() {
    [[ -z $(wine_processes "$1") ]]
}

# Ended processes that nobody has collected yet count as there.
all_collected() {
    local pid
    for pid in "$@"; do
        [[ ! -d /proc/$pid ]] || return 1
    done
}

# Ends everything in a prefix; the server writes the registry before it goes. $wine_pids remembers what was ended,
# because a stop that a signal breaks off must not forget it.
stop_wine() {
    local pids
    [[ -d $1 ]] || return 0
    mapfile -t pids < <(wine_processes "$1")
    ((${#pids[@]} > 0)) || return 0
    wine_pids+=("${pids[@]}")
    in_prefix "$1" timeout 20 wineserver -k 2>/dev/null || true
    if ! await 5 no_wine_processes "$1"; then
        mapfile -t pids < <(wine_processes "$1")
        wine_pids+=("${pids[@]}")
        kill -KILL "${pids[@]}" 2>/dev/null || true
    fi
}

# --- the template ----------------------------------------------------------------------------------------------

# A template made by another recipe or another Wine is made again.
template_stamp() {
    cat "$root/scripts/wine-prefix.sh" "$root/scripts/template.reg"
    dpkg-query -W wine wine64 fonts-wine fonts-lato fonts-dejavu-core 2>/dev/null || in_prefix "$template" wine --version
}

template_stands() {
    [[ -f $template/.ready && $(<"$template/.ready") == "$(template_stamp | sha256sum)" ]]
}

# A new prefix links Desktop, Documents and their like to the user's home: programs would write there.
unlink_profile_folders() {
    local link
    while IFS= read -r link; do
        rm "$link"
        mkdir "$link"
    done < <(find "$template/drive_c/users" -type l)
}

# Debian's Wine does not look where fonts-wine puts its fonts; without Marlett the caption buttons are letters.
copy_fonts() {
    mkdir -p "$template/drive_c/windows/Fonts"
    cp /usr/share/wine/fonts/*.{ttf,fon} "$template/drive_c/windows/Fonts/"
}

make_template() {
    stop_wine "$template"
    rm -rf "$template"
    mkdir -p "$template"
    # Without a screen: what Wine notes about the screen at this moment would be copied into every clone.
    unset DISPLAY
    in_prefix "$template" timeout --foreground -k 10 300 wineboot -i
    unlink_profile_folders
    copy_fonts
    import_registry "$template" "$root/scripts/template.reg"
    wine_tool "$template" winecfg -v win10
    # Let the services that set the prefix up come to their own end.
    in_prefix "$template" timeout 30 wineserver -w || true
    stop_wine "$template"
    template_stamp | sha256sum >"$template/.ready"
}

# Two commands at once must not make it twice.
ensure_template() {
    mkdir -p "$wine_dir"
    (
        flock 9
        if ! template_stands; then
            make_template 9>&-
        fi
    ) 9>"$wine_dir/template.lock"
}

# --- clones ----------------------------------------------------------------------------------------------------

# Wine and programs write these files in place: a shared one would change the template and every other clone.
unshare_files() {
    local file
    while IFS= read -r -d '' file; do
        cp --remove-destination -p "$template/$file" "$1/$file"
    done < <(cd "$template" && find . -type f \( -name '*.reg' -o -name '*.ini' -o -name .update-timestamp \
        -o -path './drive_c/users/*' -o -path './drive_c/ProgramData/*' \) -print0)
}

# The clone gets its name when it is complete: whoever finds it may use it.
clone_template() {
    local prefix=$1 raw=$1.new
    stop_wine "$prefix"
    rm -rf "$prefix" "$raw"
    cp -al "$template" "$raw" 2>/dev/null || { rm -rf "$raw" && cp -a --reflink=auto "$template" "$raw"; }
    rm -f "$raw/.ready"
    unshare_files "$raw"
    mv "$raw" "$prefix"
}

# --- the keeper ------------------------------------------------------------------------------------------------

keeper_ready() {
    grep -q '^ready' "$1" 2>/dev/null
}

# While it lives, Wine's server and desktop stay up: each test starts warm, and they hold no pipe of the test runner.
start_keeper() {
    local prefix=$1 program=$2 log=$3
    : >"$log"
    start_job "$log" in_prefix "$prefix" wine "$program"
    await 60 keeper_ready "$log"
}
