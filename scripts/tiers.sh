# shellcheck shell=bash
# The tiers of ./test. Sourced, never run; needs common.sh, build.sh, wine-prefix.sh and screen.sh.
# shellcheck disable=SC2034,SC2154 # they set what is not set here, and ./test reads the list

tiers=(format native-clang native-release valgrind fuzz mingw-debug mingw-clang mingw-release package)
asked_tiers=(native-debug tidy native-coverage mingw-coverage) # these run only when asked for

total_passed=0
total_failed=0
failures=()    # "tier, tab, test, tab, log" of each failed test

tier=          # the tier under way, its log, and its counts
tier_log=
passed=0
failed=0
skipped=0

# --- counting --------------------------------------------------------------------------------------------------

add_failure() {
    failures+=("$tier"$'\t'"$1"$'\t'"$(shown "$tier_log")")
    failed=$((failed + 1))
}

# One test which is a command: check NAME COMMAND...; call it as a plain command.
check() {
    local name=$1
    shift
    run_job "$tier_log" "$@"
    if ((job_rc == 0)); then
        passed=$((passed + 1))
    else
        add_failure "$name"
    fi
}

# Runs a job the tests depend on; when it fails, in $job_rc, that is one failed test named after the tier.
need() {
    run_job "$tier_log" "$@"
    ((job_rc == 0)) || add_failure "$tier"
}

# A runner that fails where every test passed, or that found none, is a failure of the tier.
count_results() {
    local rc=$1 junit=$2 lines first name
    if [[ ! -s $junit ]] || ! lines=$("$root/scripts/results.py" "$junit" 2>>"$tier_log"); then
        add_failure "$tier"
        return
    fi
    read -r first <<<"$lines"
    read -r passed _ skipped <<<"$first"
    while IFS= read -r name; do
        add_failure "$name"
    done < <(tail -n +2 <<<"$lines")
    if ((failed == 0 && (rc != 0 || passed == 0))); then
        add_failure "$tier"
    fi
}

run_ctest() {
    local junit=$log_dir/$tier.xml
    rm -f "$junit"
    run_job "$tier_log" ctest --preset "$tier" --no-tests=error --repeat "until-fail:$times" --output-junit "$junit" "$@"
    count_results "$job_rc" "$junit"
}

# --- building ahead --------------------------------------------------------------------------------------------

# Tests leave processors idle, those under Wine most of the time: meanwhile what the next tiers need is built. A tier builds
# for itself all the same, and so waits for what is under way. A build that fails ends this; its tier tells of it.
build_ahead() {
    local preset
    renice -n 10 -p $BASHPID >/dev/null
    for preset in "$@"; do
        build_preset "$preset"
    done
}

ahead_job=
start_building_ahead() {
    local name presets=()
    for name in "$@"; do
        [[ $name != @(format|valgrind|package|tidy) ]] || continue
        presets+=("$name")
    done
    ((${#presets[@]} > 0)) || return 0
    mkdir -p "$log_dir"
    : >"$log_dir/ahead.log"
    start_job "$log_dir/ahead.log" build_ahead "${presets[@]}"
    ahead_job=$job
}

# --- Wine ------------------------------------------------------------------------------------------------------

# A prefix that no earlier run has touched.
make_test_prefix() {
    ensure_template
    clone_template "$1"
}

# The tests are found by running their programs, perhaps while building: the keeper comes first.
wine_tier() {
    local prefix=$wine_dir/test
    export SITEKEEPER_WINEPREFIX=$prefix
    need build_preset "$tier" keeper
    ((job_rc == 0)) || return 0
    need make_test_prefix "$prefix"
    ((job_rc == 0)) || return 0
    if ! start_keeper "$prefix" "$build_dir/$tier/demo/keeper.exe" "$log_dir/keeper.log"; then
        echo "Wine does not start in the test prefix: $(shown "$log_dir/keeper.log")" >>"$tier_log"
        add_failure "$tier"
        return 0
    fi
    need build_preset "$tier"
    ((job_rc != 0)) || run_ctest "$@"
}

# --- valgrind --------------------------------------------------------------------------------------------------

valgrind_found=99 # its exit code for errors and leaks, which no test program has

# The C library's comparison of wide texts reads blocks beyond their ends in its versions for newer processors, which is
# harmless and not ours. One program has an operator new of its own, which must stay in place.
under_valgrind() {
    GLIBC_TUNABLES=glibc.cpu.hwcaps=-AVX2,-AVX512F,-AVX512VL,-EVEX valgrind -q --leak-check=full \
        --errors-for-leak-kinds=definite,possible --error-exitcode=$valgrind_found \
        --soname-synonyms=somalloc=nouserintercepts "$@"
}

refused_by_valgrind() {
    local rc=0
    under_valgrind "$@" || rc=$?
    ((rc == valgrind_found))
}

# --- the tiers -------------------------------------------------------------------------------------------------

native_tier() {
    need build_preset "$tier"
    ((job_rc != 0)) || run_ctest
}

tier_format() {
    check format build_preset native-debug format-check
}

tier_native-clang() {
    native_tier
}

tier_native-release() {
    native_tier
}

# The same programs as in native-release; those of a debug build take ten times as long. One that reads what nobody wrote and loses what it took has to be refused first.
tier_valgrind() {
    local program
    need build_preset native-release
    ((job_rc == 0)) || return 0
    check 'valgrind refuses a bad program' refused_by_valgrind "$build_dir/native-release/tests/unit/valgrind_victim"
    # Their thousands of random stores take longer than all others, and the sanitizers see them.
    export GTEST_FILTER='-RandomStoreTest.*'
    for program in unit/unit_tests contract/contract_tests failure/platform_failure_tests failure/allocation_failure_tests; do
        check "valgrind ${program##*/}" under_valgrind "$build_dir/native-release/tests/$program" --gtest_brief=1
    done
    unset GTEST_FILTER
}

tier_fuzz() {
    native_tier
}

# It is the compiler's own warnings, errors here, that this tier is for.
tier_mingw-clang() {
    check 'clang for Windows' build_preset mingw-clang
}

# Dialogs run on the screen that Wine has when there is none.
tier_mingw-debug() {
    local display=${DISPLAY:-}
    unset DISPLAY
    wine_tier -L '^(contract|kill|ui)$'
    end_jobs
    if [[ -n $display ]]; then
        export DISPLAY=$display
    fi
}

tier_mingw-release() {
    start_screen
    wine_tier -L '^(exe|e2e|help)$'
    end_jobs
    stop_screen
}

# A version of the same files that is newer than the one handed out.
make_newer_package() {
    local version
    version=$(product_version mingw-release)
    "$root/packaging/make_msi.sh" "$((${version%%.*} + 1)).0.0" "$(date +%s)" "$build_dir/mingw-release" "$1"
}

# A journey on a machine of its own: what one leaves behind when it fails shall not stop the next.
package_journey() {
    local journey=$1 made=$2 newer=$3 prefix=$wine_dir/test files=$build_dir/mingw-release
    export SITEKEEPER_WINEPREFIX=$prefix
    need make_test_prefix "$prefix"
    ((job_rc == 0)) || return 0
    if start_keeper "$prefix" "$files/demo/keeper.exe" "$log_dir/keeper.log"; then
        check "package.$journey" "$root/tests/package/journeys.py" "$journey" --build "$files" \
            --package "$made/SiteKeeper.msi" --newer "$newer"
    else
        add_failure "package.$journey"
    fi
    end_jobs
}

# What is handed out: made, held to its descriptions, and taken through its life on a machine.
tier_package() {
    local checks=$root/tests/package made=$build_dir/package files=$build_dir/mingw-release
    local newer=$build_dir/package-newer.msi journeys journey
    need build_preset mingw-release demo
    ((job_rc == 0)) || return 0
    need "$root/package"
    ((job_rc == 0)) || return 0
    need make_newer_package "$newer"
    ((job_rc == 0)) || return 0
    check package.tables "$checks/check_msi.py" "$made/SiteKeeper.msi" "$root" "$files"
    check package.policy "$checks/check_policy.py" "$made/policy" "$root"
    check package.winget "$checks/check_winget.py" "$made/winget" "$made/SiteKeeper.msi"
    check package.bill "$checks/check_sbom.py" "$made/SiteKeeper.spdx.json" "$files"
    check package.checks_refuse "$checks/checks_test.py" "$made" "$root" "$files"
    check package.whole "$checks/handed_out.sh" whole "$root" "$made"
    check package.repeatable "$checks/handed_out.sh" repeatable "$root" "$made"
    check package.signed "$checks/handed_out.sh" signed "$root" "$made"
    journeys=$("$checks/journeys.py" --list 2>>"$tier_log") || {
        add_failure package.journeys
        return 0
    }
    start_screen
    for journey in $journeys; do
        package_journey "$journey" "$made" "$newer"
    done
    stop_screen
}

tier_tidy() {
    check 'tidy of the native build' build_preset native-release tidy
    check 'tidy of the Windows build' build_preset mingw-release tidy
}

tier_native-debug() {
    native_tier
}

# --- coverage --------------------------------------------------------------------------------------------------

# count_lines PRESET FILE [ARGUMENT...]
count_lines() {
    gcovr --root "$root" --filter "$root/src/" --exclude-throw-branches --exclude-unreachable-branches --json "$2" \
        "${@:3}" "$build_dir/$1"
}

coverage_report() {
    local counted=$build_dir/coverage
    mkdir -p "$counted"
    count_lines native-coverage "$counted/native.json"
    count_lines mingw-coverage "$counted/wine.json" --gcov-executable x86_64-w64-mingw32-gcov-posix
    "$root/scripts/coverage.py" "$counted/native.json" "$counted/wine.json" "$root/docs/testing.md"
}

# What an earlier run counted goes first.
forget_counts() {
    find "$build_dir/$1" -name '*.gcda' -delete
}

tier_native-coverage() {
    need build_preset native-coverage
    ((job_rc == 0)) || return 0
    forget_counts native-coverage
    native_tier
}

# Adapters, dialogs and journeys on one screen; then what both builds counted, together.
tier_mingw-coverage() {
    need build_preset mingw-coverage
    ((job_rc == 0)) || return 0
    forget_counts mingw-coverage
    start_screen
    # A program counts where it was built, whatever drive it stands on.
    export GCOV_PREFIX=Z:
    wine_tier
    unset GCOV_PREFIX
    end_jobs
    stop_screen
    check docs/testing.md coverage_report
}

# --- running one -----------------------------------------------------------------------------------------------

tier_summary() {
    local colour=$green
    ((failed == 0)) || colour=$red
    printf '%8s   %s%d passed, %d failed%s' "$(elapsed "$1")" "$colour" "$passed" "$failed" "$plain"
    ((skipped == 0)) || printf ', %d skipped' "$skipped"
}

run_tier() {
    local began
    tier=$1
    tier_log=$log_dir/$tier.log
    passed=0 failed=0 skipped=0
    mkdir -p "$log_dir"
    : >"$tier_log"
    began=$(now_ms)
    progress_open "$tier"
    "tier_$tier"
    progress_close "$(tier_summary "$began")"
    ((failed == 0)) || show_tail "$tier_log"
    total_passed=$((total_passed + passed))
    total_failed=$((total_failed + failed))
}

list_failures() {
    local line name log
    ((${#failures[@]} > 0)) || return 0
    echo
    echo 'Failed:'
    for line in "${failures[@]}"; do
        IFS=$'\t' read -r line name log <<<"$line"
        printf '  %-15s %s   (%s)\n' "$line" "$name" "$log"
    done
}
