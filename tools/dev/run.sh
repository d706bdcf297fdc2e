# shellcheck shell=bash
# ./dev run. Sourced by ./dev.

verb_run() {
    fail "run is not built yet"
}
