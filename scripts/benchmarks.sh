# shellcheck shell=bash
# How each benchmark is built and run. Sourced, never run; needs common.sh, build.sh, wine-prefix.sh and screen.sh.
# shellcheck disable=SC2034,SC2154 # they set what is not set here, and ./bench reads the lists

native_benchmarks=(rules_bench update_bench ini_bench ini_memory)
wine_benchmarks=(windows_bench name_list_bench profile_bench reminder_bench trusted_paths_bench)

quick=no
results=$build_dir/bench            # what each has measured: NAME.json or NAME.tsv
bench_prefix=$wine_dir/bench        # a machine of their own
native_programs=$build_dir/native-release/benchmarks
wine_build=$build_dir/mingw-release
machine_stands=no

is_benchmark() {
    [[ " ${native_benchmarks[*]} ${wine_benchmarks[*]} " == *" $1 "* ]]
}

# The first, or with --quick the second.
full_or_quick() {
    if [[ $quick == yes ]]; then echo "$2"; else echo "$1"; fi
}

# --- the run ---------------------------------------------------------------------------------------------------

# One fact a line: name, tab, what.
describe_run() {
    local load
    read -r load _ </proc/loadavg
    printf 'date\t%s\n' "$(date -u '+%Y-%m-%d %H:%M UTC')"
    printf 'repetitions\t%s\n' "$(full_or_quick all 'few (--quick)')"
    printf 'sources\t%s\n' "$(git -C "$root" log -1 --format='%h of %cs' 2>/dev/null || echo 'without a history')"
    printf 'processor\t%s\n' "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)"
    printf 'cores\t%s\n' "$(nproc)"
    printf 'memory\t%s\n' "$(awk '/^MemTotal/ { printf "%.1f GiB", $2 / 1048576 }' /proc/meminfo)"
    printf 'kernel\t%s\n' "$(uname -sr)"
    printf 'Wine\t%s\n' "$(wine --version 2>/dev/null | head -n 1)"
    printf 'compilers\tg++ %s, mingw g++ %s\n' "$(g++ -dumpfullversion)" \
        "$(x86_64-w64-mingw32-g++-posix -dumpfullversion)"
    printf 'load average before it\t%s\n' "$load"
}

# --- building --------------------------------------------------------------------------------------------------

build_chosen() {
    local name native=() windows=()
    for name in "${native_benchmarks[@]}"; do
        ! is_chosen "$name" || native+=("$name")
    done
    for name in "${wine_benchmarks[@]}"; do
        ! is_chosen "$name" || windows+=("$name")
    done
    if ((${#native[@]} > 0)); then
        step 'Building the native programs' "$log_dir/bench-native.log" build_preset native-release "${native[@]}"
    fi
    if ((${#windows[@]} > 0)); then
        step 'Building the Windows programs' "$log_dir/bench-windows.log" build_preset mingw-release keeper \
            SiteKeeper64 ORSWDialogsOEM64 bare_dialog "${windows[@]}"
    fi
}

# --- the machine -----------------------------------------------------------------------------------------------

# The program's library lies where it looks for it: without it a box comes before the window.
make_machine() {
    local shared="$bench_prefix/drive_c/Program Files/Common Files/ORIVEL"
    ensure_template
    clone_template "$bench_prefix"
    mkdir -p "$shared"
    cp "$wine_build/ORSWDialogsOEM64.dll" "$shared/"
}

# A prefix without a past, and a screen; made before the first program that needs them.
start_machine() {
    [[ $machine_stands == no ]] || return 0
    step 'Making a Windows machine' "$log_dir/bench-machine.log" make_machine
    start_screen
    start_keeper "$bench_prefix" "$wine_build/demo/keeper.exe" "$log_dir/keeper.log" ||
        fail "Wine does not start: $(shown "$log_dir/keeper.log")"
    machine_stands=yes
}

# A file as Windows programs name it.
windows_path() {
    echo "Z:${1//\//\\}"
}

# Gives the program half an hour: an empty list of names takes Wine a while.
on_windows() {
    local name=$1
    shift
    SITEKEEPER_WINEPREFIX=$bench_prefix SITEKEEPER_WINE_TIMEOUT=1800 "$root/scripts/wine-run" \
        "$wine_build/benchmarks/$name.exe" "$@"
}

# --- measuring -------------------------------------------------------------------------------------------------

# What the program prints becomes its result when it has come to its end.
measure() {
    local name=$1
    "measure_$name" >"$results/$name.part"
    if [[ -s $results/$name.part ]]; then
        mv "$results/$name.part" "$results/$name.tsv"
    else
        rm "$results/$name.part" # it has written its own
    fi
}

# The repetitions of all sizes are mixed, so that the machine's moods meet all of them.
google() {
    local name=$1
    shift
    "$native_programs/$name" --benchmark_out="$results/$name.json.part" --benchmark_out_format=json \
        --benchmark_enable_random_interleaving=true \
        --benchmark_repetitions="$(full_or_quick 7 1)" --benchmark_min_time="$(full_or_quick 0.2 0.02)" "$@" >&2
    mv "$results/$name.json.part" "$results/$name.json"
}

measure_rules_bench() {
    google rules_bench
}

measure_update_bench() {
    google update_bench
}

measure_ini_bench() {
    google ini_bench --benchmark_filter="$(full_or_quick . '-/1000000$')"
}

measure_ini_memory() {
    local program=$native_programs/ini_memory libraries count ours theirs library
    mapfile -t libraries < <("$program")
    for count in 100000 $(full_or_quick 1000000 ''); do
        ours=$("$program" "${libraries[0]}" "$count")
        for library in "${libraries[@]:1}"; do
            theirs=$("$program" "$library" "$count")
            printf 'peak of one load\t%s\tKiB\t%s\t%s\t%s\n' "$count" "$ours" "$library" "$theirs"
        done
    done
}

measure_windows_bench() {
    local artwork
    artwork=$(cat "$root"/src/res/*.{ico,bmp} | wc -c)
    on_windows windows_bench "$(windows_path "$wine_build/SiteKeeper64.exe")" \
        "$(windows_path "$wine_build/benchmarks/bare_dialog.exe")" "$((artwork / 1024))" "$(full_or_quick 11 3)"
}

# The largest list takes most of a minute each time.
measure_name_list_bench() {
    on_windows name_list_bench 1000 "$(full_or_quick 11 1)"
    on_windows name_list_bench 10000 "$(full_or_quick 11 1)"
    [[ $quick == yes ]] || on_windows name_list_bench 100000 3
}

measure_profile_bench() {
    on_windows profile_bench "$(full_or_quick 11 1)"
}

# Wine looks through a folder for each file that it makes in it: they are made from outside.
measure_reminder_bench() {
    local folders=$results/folders count places=()
    for count in 10 1000 100000; do
        mkdir -p "$folders/$count"
        (cd "$folders/$count" && seq -f 'program%.0f.exe' "$count" | xargs touch)
        places+=("$(windows_path "$folders/$count")")
    done
    on_windows reminder_bench "$(windows_path "$wine_build/SiteKeeper64.exe")" "$(full_or_quick 11 3)" "${places[@]}"
    rm -rf "$folders"
}

measure_trusted_paths_bench() {
    on_windows trusted_paths_bench "$(full_or_quick 21 3)"
}
