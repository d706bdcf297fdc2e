# shellcheck shell=bash
# ./dev package. Sourced by ./dev.

# The packages, and what their builder says of them, end up here.
readonly debs=build/packages
readonly source=build/packages-source

verb_package() {
    case ${1:-} in
    '')
        need build package
        stage_source
        build_packages "$debs"
        check_packages
        ;;
    --check)
        need build package check_package
        stage_source
        build_packages "$debs"
        check_packages
        check_reproducible
        check_installed
        ;;
    *) fail "package knows only --check, not '$1'" ;;
    esac
    echo "The packages are in $debs:"
    (cd "$debs" && ls -sh ./*.deb)
}

# Keeps what the project is at this moment, so that every build is of the same.
stage_source() {
    rm -rf "$source"
    mkdir -p "$source"
    project_files | tar --create --null --files-from=- | tar --extract --directory="$source"
    cp -r packaging/debian "$source/debian"
}

# Builds the packages of the staged source in a folder of their own: build_packages FOLDER
build_packages() {
    local folder=$1
    rm -rf "$folder"
    mkdir -p "$folder"
    cp -r "$source" "$folder/source"
    # The log is long and says little; it counts when something went wrong.
    (cd "$folder/source" && dpkg-buildpackage --build=binary --no-sign) >"$folder/log" 2>&1 \
        || fail "the packages could not be built; $folder/log ends so: $(tail -n 20 "$folder/log")"
    rm -r "$folder/source"
}

# Every file that belongs to the project, with a zero byte after each name.
project_files() {
    if git rev-parse --git-dir >/dev/null 2>&1; then
        # Without those that are there for git only.
        git ls-files --cached --others --exclude-standard -z | while IFS= read -r -d '' file; do
            [[ ! -e $file ]] || printf '%s\0' "$file"
        done
    else
        find . \( -path ./build -o -path ./.git \) -prune -o -type f -print0
    fi
}

check_packages() {
    lintian --allow-root --fail-on=error,warning --info "$debs"/*.changes || fail "lintian finds faults in the packages"
    echo "lintian: no error and no warning"
    check_hardened
}

# What the packages bring, not what was built: a packager's tools may change it.
check_hardened() {
    local content=build/packages-content deb
    rm -rf "$content"
    for deb in "$debs"/*.deb; do
        dpkg-deb --extract "$deb" "$content"
    done
    local binaries
    mapfile -t binaries < <(find "$content" -type f \( -path '*/bin/*' -o -name '*.so' \))
    ((${#binaries[@]} == 3)) || fail "the packages should have three binaries: ${binaries[*]}"
    tests/packaging/hardened "${binaries[@]}" || fail "the packages have binaries that are not hardened"
    rm -r "$content"
    echo "hardened: ${#binaries[@]} binaries"
}

# A build in another folder, at another hour of the world and by somebody stricter is the same.
check_reproducible() {
    local again=build/packages-again/elsewhere
    (
        umask 027
        export TZ=Pacific/Kiritimati LC_ALL=C.UTF-8 HOME=/nonexistent
        build_packages "$again"
    )
    local deb
    for deb in "$debs"/*.deb; do
        cmp "$deb" "$again/${deb##*/}" || fail "two builds of ${deb##*/} differ"
    done
    echo "reproducible: two builds are the same, byte for byte"
}

# Installs, tries and removes the packages on a Debian that has nothing but what they ask for.
check_installed() {
    local as_root=()
    ((EUID == 0)) || as_root=(sudo)
    # The mirrors of this machine, without what is not Debian's.
    local sources
    # shellcheck disable=SC2016 # apt's own placeholders
    sources=$(apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' \
        'Origin: Debian' | sort -u)
    "${as_root[@]}" mmdebstrap --quiet --variant=apt \
        --include=adduser,dbus,libglib2.0-bin,xdotool,xvfb \
        --customize-hook='mkdir "$1/packages"' --customize-hook="copy-in $(echo "$debs"/*.deb) /packages" \
        --customize-hook='copy-in tests/packaging/try-installed /' \
        --customize-hook='chroot "$1" /try-installed /packages' \
        --format=null bookworm /dev/null - <<<"$sources" || fail "the installed packages do not work"
    echo "installed: the packages install, run and go away again on a bare Debian 12"
}
