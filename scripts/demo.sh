# shellcheck shell=bash
# The demo: a Wine prefix with an installed suite for Site Keeper to look after. Sourced, never run; needs common.sh
# and wine-prefix.sh.
# shellcheck disable=SC2154 # they set the places

demo=$wine_dir/demo
demo_drive=$demo/drive_c
program_build=$build_dir/mingw-release
demo_tools=$program_build/demo

stand_ins=(LedgerComposer64 SheetWriter64 NormKeeper64 Assist64)

demo_stands() {
    [[ -f $demo/.ready ]]
}

# --- files -----------------------------------------------------------------------------------------------------

# Copies what the build has made anew.
refresh() {
    local from=$1 folder=$2
    if ! cmp -s "$from" "$folder/${from##*/}"; then
        mkdir -p "$folder"
        cp --remove-destination "$from" "$folder/"
    fi
}

copy_stand_ins() {
    local folder=$1 name
    for name in "${stand_ins[@]}"; do
        refresh "$demo_tools/$name.exe" "$folder"
    done
}

# Names only: the demo has no AutoCAD that would load them.
make_designer_files() {
    local designer=$demo_drive/Suite/Designer discipline name
    mkdir -p "$designer/Common/R23"
    touch "$designer/Common/R23/"{OrivelCore.arx,OrivelMenu.arx,Startup.fas,Layers.fas}
    for discipline in ELECTRIC PID ISOMETRIC ORTHO; do
        name=${discipline,,}
        name=${name^}
        mkdir -p "$designer/$discipline/R23"
        touch "$designer/$discipline/R23/"{"$name.arx","$name.fas","${name}Tables.fas"}
    done
}

make_suite_files() {
    mkdir -p "$demo_drive/Suite/"{Applications,Datafiles,Help}
    touch "$demo_drive/Suite/Datafiles/"{Catalogue.mdb,Norms.mdb,Symbols.mdb}
    make_designer_files
    # Another place to browse to, as if the suite had moved to a new server.
    mkdir -p "$demo_drive/NewServer/Suite/"{Applications,Datafiles}
}

# What each ./run brings up to date in a demo that is kept.
refresh_programs() {
    local suite=$demo_drive/Suite
    refresh "$program_build/SiteKeeper64.exe" "$suite/Applications"
    copy_stand_ins "$suite/Applications"
    copy_stand_ins "$demo_drive/NewServer/Suite/Applications"
    refresh "$program_build/ORSWDialogsOEM64.dll" "$demo_drive/Program Files/Common Files/ORIVEL"
    refresh "$program_build/SiteKeeper.chm" "$suite/Help"
}

# --- shortcuts -------------------------------------------------------------------------------------------------

# They lead to the suite's former place, so that a renewal can be seen.
make_shortcut() {
    local link=$1 target=$2 name
    name=${link##*\\}
    wine_tool "$demo" "$demo_tools/make_shortcut.exe" "$link" "$target" "${name%.lnk}"
}

# Into the folders that Wine itself names as the common desktop and the common programs.
make_shortcuts() {
    local old='C:\OldSuite\Applications'
    local desktop='C:\users\Public\Desktop\ORIVEL LX Plus 2023'
    local programs='C:\ProgramData\Microsoft\Windows\Start Menu\Programs\ORIVEL\ORIVEL LX Plus 2023'
    mkdir -p "$demo_drive/users/Public/Desktop/ORIVEL LX Plus 2023" \
        "$demo_drive/ProgramData/Microsoft/Windows/Start Menu/Programs/ORIVEL/ORIVEL LX Plus 2023"
    make_shortcut "$desktop\\Site Keeper.lnk" "$old\\SiteKeeper64.exe"
    make_shortcut "$desktop\\Norm Keeper.lnk" "$old\\NormKeeper64.exe"
    make_shortcut "$programs\\Site Keeper.lnk" "$old\\SiteKeeper64.exe"
    make_shortcut "$programs\\Ledger Composer.lnk" "$old\\LedgerComposer64.exe"
    make_shortcut "$programs\\Assist Web Page.lnk" "$old\\Assist64.exe"
}

# --- the whole -------------------------------------------------------------------------------------------------

make_demo() {
    clone_template "$demo"
    make_suite_files
    refresh_programs
    import_registry "$demo" "$root/tools/demo/demo.reg"
    make_shortcuts
    stop_wine "$demo"
    touch "$demo/.ready"
}
