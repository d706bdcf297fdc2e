# shellcheck shell=bash
# What each purpose needs of Debian 12. Sourced by ./dev.

declare -A packages=(
    [build]="clang-19 libclang-rt-19-dev lld-19 llvm-19 cmake ninja-build pkg-config
        qt6-base-dev qt6-tools-dev qt6-l10n-tools qcoro-qt6-dev qt6-httpserver-dev qt6-websockets-dev
        libcurl4-openssl-dev libssl-dev nlohmann-json3-dev libicu-dev libxcb1-dev libxcb-ewmh-dev
        libxcb-randr0-dev libxcb-shape0-dev libxcb-xinput-dev"
    [build_tests]="libgcr-3-dev"
    # A desktop without a screen: ./dev run shows the program in it, and tests take parts of it.
    [desktop]="xvfb openbox xfwm4 xdotool imagemagick x11-utils xfce4-panel lxqt-panel tint2 gnome-keyring
        libsecret-tools dbus libglib2.0-bin fonts-dejavu-core adwaita-icon-theme curl"
    [run]="libqt6sql6-sqlite ca-certificates xdg-utils"
    # The fonts of the pictures of the user interface.
    [shots]="fonts-inter fonts-jetbrains-mono"
    [test]="libqt6sql6-sqlite ca-certificates chromium chromium-driver locales openssl librsvg2-bin picom
        x11-xserver-utils at-spi2-core python3-gi gir1.2-atspi-2.0 desktop-file-utils appstream groff
        bash-completion binutils packagekit xfce4-session mate-session-manager lxqt-session strace
        python3"
    [mutate]="python3"
    [bench]="libbenchmark-dev"
    # Measures and draws.
    [growth]="libbenchmark-dev python3"
    # Other resident programs, what a desktop for one of them needs, and what the floors are built with.
    [cost]="qlipper flameshot copyq parcellite keepassxc xvfb evilwm dbus gnome-keyring libglib2.0-bin openssl python3
        binutils ca-certificates fontconfig fonts-dejavu-core libqt6sql6-sqlite libgtk-3-0 libsystemd-dev"
    [package]="binutils debhelper dpkg-dev fakeroot lintian man-db"
    # Makes a bare Debian to install the packages on.
    [check_package]="mmdebstrap"
    [lint]="clang-format-19 clang-tidy-19"
)

# Prints those of the given packages that are not installed.
missing_packages() {
    local installed
    installed=$(dpkg-query --show --showformat '${Package}:${db:Status-Status}\n' "$@" 2>/dev/null || true)
    local package
    for package in "$@"; do
        grep -qx "$package:installed" <<<"$installed" || echo "$package"
    done
}

# Sees to it that the packages for these purposes are there: need build test
need() {
    local purpose wanted=()
    for purpose in "$@"; do
        # shellcheck disable=SC2206 # a list of words
        wanted+=(${packages[$purpose]})
    done

    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        fail "this is not a Debian system; what Debian 12 calls ${wanted[*]} is needed"
    fi

    local missing
    mapfile -t missing < <(missing_packages "${wanted[@]}")
    ((${#missing[@]} > 0)) || return 0

    local as_root=()
    if ((EUID != 0)); then
        command -v sudo >/dev/null || fail "root must install these packages first: ${missing[*]}"
        as_root=(sudo)
    fi
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300)
    echo "dev: installing ${missing[*]}"
    # A source that does not answer matters only if a package then cannot be found.
    "${apt[@]}" update || true
    "${apt[@]}" install --yes --no-install-recommends "${missing[@]}" \
        || fail "these packages could not be installed (Debian 12 has them all): ${missing[*]}"
}
