# shellcheck shell=bash
# A display that has no screen, and a window manager on it. Sourced after children.sh; the caller has `fail`.

# Starts a display and sets DISPLAY to it: start_display SIZE LOGS
start_display() {
    # The server chooses a free number itself and writes it down when it is ready.
    start "$2/Xvfb" Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp -noreset 3>"$2/display"
    within 20 grep -q . "$2/display" || fail "the display did not start: $(<"$2/Xvfb")"
    DISPLAY=:$(<"$2/display")
    export DISPLAY
}

# start_window_manager COMMAND LOGS
start_window_manager() {
    # shellcheck disable=SC2086 # a program and its options
    start "$2/window-manager" $1
    within 20 window_manager_is_there || fail "the window manager did not start: $(<"$2/window-manager")"
}

window_manager_is_there() {
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'
}
