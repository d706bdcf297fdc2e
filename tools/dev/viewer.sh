# shellcheck shell=bash disable=SC2034,SC2154 # what it sets and uses is the caller's
# What a viewer sees of the program and does with it, on the desktop of tools/dev/desktop. Sourced after children.sh; the
# caller has the folders `programs` and `logs`.

fail() {
    has_said_why=yes
    echo "${0##*/}: $*; the logs are in $logs" >&2
    exit 1
}

# Ends the programs, and says which command it was where the script ends without a word.
leave() {
    local status=$1 command=$2
    end_children
    if ((status != 0)) && [[ -z ${has_said_why:-} ]]; then
        echo "${0##*/}: \"$command\" did not work; the logs are in $logs" >&2
    fi
}

# Fails with the reason unless a command succeeds in time: expect REASON SECONDS COMMAND…
expect() {
    local reason=$1
    shift
    within "$@" || fail "$reason within $1 seconds"
}

property() {
    gdbus call --session --dest "$1" --object-path "$2" --method org.freedesktop.DBus.Properties.Get "$3" "$4"
}

# Sets item to the bus name and path of the program's status item.
find_item() {
    local candidate
    for candidate in $(property org.kde.StatusNotifierWatcher /StatusNotifierWatcher org.kde.StatusNotifierWatcher \
        RegisteredStatusNotifierItems | grep -o "'[^']*'" | tr -d "'"); do
        item=("${candidate%%/*}" "/${candidate#*/}")
        if [[ $(tooltip) == Orvella* ]]; then
            return
        fi
    done
    return 1
}

tooltip() {
    property "${item[@]}" org.kde.StatusNotifierItem ToolTip | grep -o "Orvella · [^']*"
}

tooltip_is() {
    [[ $(tooltip) == "$1" ]]
}

# Sets at_x and at_y to the middle of what is green in the panel.
find_green() {
    local box
    box=$(import -silent -window root -crop 1280x28+0+0 +repage miff:- \
        | convert - -fx 'g > 0.3 && g > 1.4 * r && g > 1.25 * b' -format '%@' info:)
    [[ $box =~ ^([0-9]+)x([0-9]+)\+([0-9]+)\+([0-9]+)$ ]] || return 1
    at_x=$((BASH_REMATCH[3] + BASH_REMATCH[1] / 2))
    at_y=$((BASH_REMATCH[4] + BASH_REMATCH[2] / 2))
    # The box of a picture without anything green is the whole panel.
    ((BASH_REMATCH[1] > 2 && BASH_REMATCH[1] < 64))
}

windows() {
    { xdotool search --onlyvisible --all --pid "$program" --name '' || true; } | sort
}

# Whether the program shows a window that was not there before the click.
panel_is_open() {
    [[ -n $(comm -13 <(echo "$windows_before") <(windows)) ]]
}

panel_is_closed() {
    ! panel_is_open
}

startup_window() {
    xdotool search --onlyvisible --name '^Orvella$'
}

no_startup_window() {
    ! startup_window
}

start_programs() {
    # A few seconds are enough to see it count.
    start "$logs/sandbox.log" "$programs/orvella-sandbox" --database "$HOME/sandbox.db" --required-seconds 5
    expect "the service did not say its address" 10 grep -q '^http' "$logs/sandbox.log"
    service=$(grep -m 1 '^http' "$logs/sandbox.log")
    echo "The service runs at $service."

    start "$logs/orvella.log" "$programs/orvella" --set "apiBaseURL=$service"
    program=${children[-1]}
    expect "Orvella's item did not appear in the panel" 20 find_item
    echo "Orvella's item is in the panel: \"$(tooltip)\"."
}

link_device() {
    expect "the device did not register" 20 grep -q ' registered; link it at ' "$logs/sandbox.log"
    expect "the token is not in the keyring" 10 \
        secret-tool lookup service orvella.device-token account default
    local address
    address=$(sed -n 's/.* registered; link it at //p' "$logs/sandbox.log")
    curl --silent --fail --output /dev/null "$address" || fail "the activation page does not answer"
    curl --silent --fail --output /dev/null --data-urlencode "code=${address##*code=}" "$service/activate" \
        || fail "the activation page did not take the code"
    expect "the device was not linked" 10 grep -q ' linked to viewer ' "$logs/sandbox.log"
    echo "The device is linked."
}
