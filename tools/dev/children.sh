# shellcheck shell=bash
# Starting programs, waiting for what they do, and ending them. Sourced; the caller has `set -euo pipefail`.

children=()

# Ends what was started, the last one first, by its id. From here on the script ends with its children.
end_children_at_exit() {
    trap end_children EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}

end_children() {
    # A second Ctrl-C must not leave half of them behind.
    trap '' INT TERM HUP
    local i
    for ((i = ${#children[@]} - 1; i >= 0; i--)); do
        kill "${children[i]}" 2>/dev/null || true
        wait "${children[i]}" 2>/dev/null || true
    done
    children=()
}

# Starts a program that writes into a log file: start LOG COMMAND…
start() {
    local log=$1
    shift
    # A background command has no standard input unless it is given one.
    "$@" >"$log" 2>&1 <&0 &
    children+=($!)
}

# Runs a command again and again until it succeeds: within SECONDS COMMAND…
within() {
    local end=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || return 1
        sleep 0.1
    done
}

# Runs a command with the caller's standard input. In the background, so that a signal ends it at once.
run_to_its_end() {
    "$@" <&0 &
    children+=($!)
    wait $!
}
