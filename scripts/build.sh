# shellcheck shell=bash
# Configuring and building a preset. Sourced, never run; needs common.sh.
# shellcheck disable=SC2154 # common.sh sets the places

# The build itself notices changed CMake files, but not changed presets.
is_configured() {
    local ninja=$build_dir/$1/build.ninja
    [[ -f $ninja && $ninja -nt $root/CMakePresets.json ]]
}

# A build folder that was moved along with the project names places that are gone.
is_moved() {
    local cache=$build_dir/$1/CMakeCache.txt
    [[ -f $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"
}

configure_preset() {
    local anew=()
    if is_moved "$1"; then
        anew=(--fresh)
    elif is_configured "$1"; then
        return
    fi
    cmake "${anew[@]}" --preset "$1"
}

# The version that a preset was configured with.
product_version() {
    sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build_dir/$1/CMakeCache.txt"
}

# build_preset PRESET [TARGET...]; two commands at once take turns in one build folder.
build_preset() {
    local preset=$1 targets=()
    shift
    if (($# > 0)); then
        targets=(--target "$@")
    fi
    mkdir -p "$log_dir"
    (
        flock 9
        configure_preset "$preset" 9>&-
        cmake --build --preset "$preset" "${targets[@]}" 9>&-
    ) 9>"$log_dir/$preset.lock"
}
