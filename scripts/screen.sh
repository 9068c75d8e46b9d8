# shellcheck shell=bash
# The virtual screen, and what is known about a real one. Sourced, never run; needs common.sh.
# shellcheck disable=SC2154 # common.sh sets what is not set here

screen_job=

screen_server() {
    # The number is chosen by the server, so that two commands at once do not meet on one screen.
    exec Xvfb -displayfd 3 -screen 0 "${screen_size:-1280x1024}x24" -nolisten tcp -noreset 3>"$1"
}

# The server writes the number when it takes connections.
screen_ready() {
    [[ -s $1 ]] && [[ $(<"$1") == [0-9]* ]]
}

start_screen() {
    local number=$log_dir/screen.$$
    mkdir -p "$log_dir"
    : >"$number"
    start_job "$log_dir/screen.log" screen_server "$number"
    screen_job=$job
    await 20 screen_ready "$number" || fail "the virtual screen does not start: $(shown "$log_dir/screen.log")"
    DISPLAY=:$(<"$number")
    export DISPLAY
    rm -f "$number"
}

stop_screen() {
    [[ -n $screen_job ]] || return 0
    end_group "$screen_job"
    screen_job=
    unset DISPLAY
}

display_usable() {
    [[ -n ${DISPLAY:-} ]] && timeout 5 xdpyinfo >/dev/null 2>&1
}

has_window_manager() {
    timeout 5 xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}
