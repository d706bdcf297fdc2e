# shellcheck shell=bash
# ./dev lint. Sourced by ./dev.

# Prints for each source that was built a line with it and every file of the project that it includes.
sources_with_headers() {
    ninja -C build/dev -t deps | awk -v root="$root/" '
        /^[^ ]/ { if (line) print line; line = "" }
        /^ / {
            path = $1
            if (!sub("^\\.\\./\\.\\./", "", path) && !sub("^" root, "", path)) next
            if (path ~ /^(Velmora|sandbox|tests|bench)\//) line = line (line ? " " : "") path
        }
        END { if (line) print line }' | grep '^[^ ]*\.cpp' | sort -u -k 1,1
}

# Prints the sources that changed, with anything that bears on them, since clang-tidy last passed them.
sources_to_look_through() {
    local source headers
    while read -r source headers; do
        # shellcheck disable=SC2086 # a list of paths
        if [[ ! -e build/lint/$source ||
            -n $(find .clang-tidy "${source%/*}"/.clang-tidy $source $headers -newer "build/lint/$source" 2>/dev/null) ]]; then
            echo "$source"
        fi
    done < <(sources_with_headers)
}

# Keeps how the sources are compiled, but for the precompiled headers: they would hide that a source lacks an include.
keep_commands() {
    mkdir -p build/lint
    sed -E 's/ -Xclang -include(-pch)? -Xclang [^ ]+//g' build/dev/compile_commands.json \
        >build/lint/compile_commands.json
}

look_through() {
    local complaints
    if ! complaints=$(clang-tidy-19 --quiet -p build/lint "$1" 2>&1); then
        printf '%s\n' "$complaints"
        return 1
    fi
    mkdir -p "build/lint/${1%/*}"
    touch "build/lint/$1"
}

verb_lint() {
    need build build_tests lint
    # The sources include what moc makes of them.
    build_preset dev
    keep_commands
    local files=("$@")
    (($# > 0)) || mapfile -t files < <(sources_to_look_through)
    ((${#files[@]} > 0)) || return 0
    export -f look_through
    # shellcheck disable=SC2016 # the inner bash expands it
    printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c 'look_through "$1" || exit 1' bash \
        || fail "clang-tidy found faults in what it looked through (${#files[@]} sources)"
}
