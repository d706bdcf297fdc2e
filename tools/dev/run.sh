# shellcheck shell=bash
# ./dev run. Sourced by ./dev.

# shellcheck source=tools/dev/children.sh
source tools/dev/children.sh

verb_run() {
    if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
        need build run
        build_preset release
        run_here
    else
        need build run desktop
        build_preset release
        run_in_desktop
    fi
}

# On the developer's own desktop, but with settings, secrets, autostart entry and account of its own.
run_here() {
    mkdir -p build/run
    end_children_at_exit
    start build/run/sandbox.log build/release/bin/orvella-sandbox --database build/run/sandbox.db
    within 10 grep -q '^http' build/run/sandbox.log || fail "the service did not start: build/run/sandbox.log"
    local service
    service=$(grep -m 1 '^http' build/run/sandbox.log)

    build/release/bin/orvella --profile build/run/profile --set "apiBaseURL=$service" &
    children+=($!)
    echo "Orvella is in the bar. Its dashboard: $service/viewer"
    if within 10 grep -q ' registered; link it at ' build/run/sandbox.log; then
        echo "Link this device: $(sed -n 's/.* registered; link it at //p' build/run/sandbox.log)"
    fi
    echo "Ctrl-C ends both."
    wait -n || fail "a program ended with an error; see build/run/sandbox.log"
}

# Everything lies in the desktop's folder, its keyring and its home too: this is Orvella as it is installed.
run_in_desktop() {
    rm -rf build/run/screenshots
    exec tools/dev/desktop build/run/desktop tools/dev/watch-an-ad build/release/bin build/run/screenshots \
        build/run/desktop/log
}
