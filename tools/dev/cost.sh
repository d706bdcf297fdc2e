# shellcheck shell=bash
# ./dev bench. Sourced by ./dev.

# Everything of it lies here.
readonly cost=build/cost

verb_bench() {
    local options=()
    case ${1:-} in
    '') ;;
    --quick) options=(--quick) ;;
    *) fail "bench knows only --quick, not '$1'" ;;
    esac
    need build cost
    build_preset release
    install_stripped
    build_floors
    unpack_gtk_theme

    local as_root=()
    ((EUID == 0)) || as_root=(sudo)
    "${as_root[@]}" bench/cost/measure "${options[@]}" --installed "$cost/installed" --programs build/release/bin \
        --floors "$cost/floors" --theme "$cost/theme" --folder "$cost/work"
}

# As the package brings it: stripped by the same tool in the same way.
install_stripped() {
    rm -rf "$cost/installed"
    cmake --install build/release --prefix "$cost/installed" >/dev/null
    find "$cost/installed" -type f \( -path '*/bin/*' -o -name '*.so' \) \
        -exec strip --remove-section=.comment --remove-section=.note {} +
}

build_floors() {
    cmake -S bench/cost/floors -B "$cost/floors" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_C_COMPILER=clang-19 -DCMAKE_CXX_COMPILER=clang++-19 >/dev/null
    cmake --build "$cost/floors" >/dev/null
}

# Makes a plugin folder of it. Most desktops have this package, which loads GTK into every Qt program; installed, it
# would change all those of this machine.
unpack_gtk_theme() {
    local package=$cost/theme-package
    [[ ! -e $cost/theme ]] || return 0
    rm -rf "$package"
    mkdir -p "$package"
    (cd "$package" && apt-get -qq download qt6-gtk-platformtheme) || fail "qt6-gtk-platformtheme could not be had"
    dpkg-deb --extract "$package"/*.deb "$package/content"
    mv "$package"/content/usr/lib/*/qt6/plugins "$cost/theme"
    rm -r "$package"
}
