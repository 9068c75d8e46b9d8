# shellcheck shell=bash
# Places, progress lines, jobs and the tidy-up that ./run, ./test, ./package and ./bench share. Sourced, never run.
# shellcheck disable=SC2034 # those who source it read what it sets

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build_dir=$root/build
log_dir=$build_dir/log

line_open=no   # a progress line waits for its end
prefixes=()    # Wine prefixes that may have a server to stop
wine_pids=()   # Wine's processes that were ended; perhaps not collected yet

if [[ -t 1 && -z ${NO_COLOR:-} && ${TERM:-dumb} != dumb ]]; then
    red=$'\e[31m' green=$'\e[32m' plain=$'\e[0m'
else
    red='' green='' plain=''
fi

# --- words -----------------------------------------------------------------------------------------------------

now_ms() {
    local micro=${EPOCHREALTIME//[!0-9]/}
    echo $((micro / 1000))
}

# Milliseconds since $1 as "12.3 s".
elapsed() {
    local ms=$(($(now_ms) - $1))
    printf '%d.%d s' $((ms / 1000)) $((ms % 1000 / 100))
}

# A place as the reader would type it: relative when it lies in the project.
shown() {
    echo "${1#"$root"/}"
}

progress_open() {
    local dots='..............................................'
    printf '%s %s ' "$1" "${dots:0:$((${#dots} - ${#1}))}"
    line_open=yes
}

progress_close() {
    printf '%s\n' "$1"
    line_open=no
}

break_line() {
    if [[ $line_open == yes ]]; then
        progress_close "${1:-}"
    fi
}

fail() {
    break_line
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

show_tail() {
    printf -- '--- the end of %s\n' "$(shown "$1")"
    tail -n "${2:-25}" "$1" 2>/dev/null || true
    printf -- '---\n'
}

# --- jobs ------------------------------------------------------------------------------------------------------

# Every job is a process group of its own. A Ctrl-C of the terminal therefore reaches only the script, which ends the
# jobs in an order that leaves nothing behind. Output is appended to the log; $job names the group.
job=
start_job() {
    local log=$1
    shift
    mkdir -p "${log%/*}"
    set -m
    "$@" >>"$log" 2>&1 </dev/null 8>&- &
    job=$!
    set +m
}

# Runs a job to its end and leaves its code in $job_rc. Call it, and what is built on it, as a plain command: in a
# condition, or before || and &&, bash would let a failing function of the job run on. wait, unlike a command in the
# foreground, lets a trap run at once.
job_rc=0
run_job() {
    job_rc=0
    start_job "$@"
    wait "$job" || job_rc=$?
}

# One progress line around one job, whose log starts empty.
attempt() {
    local label=$1 log=$2 began
    shift 2
    began=$(now_ms)
    mkdir -p "${log%/*}"
    : >"$log"
    progress_open "$label"
    run_job "$log" "$@"
    if ((job_rc == 0)); then
        progress_close "$(elapsed "$began")"
    else
        progress_close failed
        show_tail "$log"
    fi
}

# As attempt, but nothing goes on after a failure.
step() {
    attempt "$@"
    ((job_rc == 0)) || exit 1
}

# Polls until the command succeeds: await SECONDS COMMAND...
await() {
    local end=$(($(now_ms) + $1 * 1000))
    shift
    until "$@"; do
        (($(now_ms) < end)) || return 1
        sleep 0.02
    done
}

group_gone() {
    ! kill -0 -- "-$1" 2>/dev/null
}

await_group() {
    if ! await 5 group_gone "$1"; then
        kill -KILL -- "-$1" 2>/dev/null || true
        await 5 group_gone "$1" || true
    fi
    wait "$1" 2>/dev/null || true
}

end_group() {
    kill -TERM -- "-$1" 2>/dev/null || true
    await_group "$1"
}

# One command at a time may use a prefix. Jobs do not inherit the lock: what a killed command leaves running must not
# keep the next one out.
lock_for() {
    mkdir -p "${1%/*}"
    exec 8>"$1"
    flock -n 8 || fail "$2"
}

# --- tidy-up ---------------------------------------------------------------------------------------------------

# The screen goes last: a Wine program that loses it may show an error to nobody. What is built for later goes on.
other_jobs() {
    jobs -p | grep -vx -e "${screen_job:-none}" -e "${ahead_job:-none}" || true
}

end_jobs() {
    local groups pid prefix
    mapfile -t groups < <(other_jobs)
    for pid in "${groups[@]}"; do
        kill -TERM -- "-$pid" 2>/dev/null || true
    done
    # Wine's own services are members of these groups, and go at once when their server is told to.
    for prefix in "${prefixes[@]}"; do
        stop_wine "$prefix"
    done
    for pid in "${groups[@]}"; do
        await_group "$pid"
    done
}

tidy_up() {
    local rc=$?
    trap - EXIT
    trap '' INT TERM HUP PIPE
    if ((rc > 128)); then
        break_line stopped
    fi
    [[ -z ${ahead_job:-} ]] || end_group "$ahead_job"
    end_jobs
    stop_screen
    await 2 all_collected "${wine_pids[@]}" || true
    exit "$rc"
}

tidy_up_at_exit() {
    trap tidy_up EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 141' PIPE
    trap 'exit 143' TERM
}
