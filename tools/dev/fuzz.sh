# shellcheck shell=bash
# ./dev fuzz. Sourced by ./dev.

# What the fuzzers need besides the project's seeds: folders of external material, where it is there.
declare -A external_seeds=(
    [Addresses]=url
    [Records]=json/test_parsing
    [Settings]=json/test_parsing
)

verb_fuzz() {
    local seconds=30 names=() argument
    for argument in "$@"; do
        case $argument in
        *[!0-9]*) names+=("$argument") ;;
        *) seconds=$argument ;;
        esac
    done
    ((${#names[@]} > 0)) || mapfile -t names < <(cd fuzz/seeds && printf '%s\n' *)
    local name
    for name in "${names[@]}"; do
        [[ -d fuzz/seeds/$name ]] || fail "there is no fuzzer '$name': they are$(cd fuzz/seeds && printf ' %s' *)"
    done
    need build
    build_preset fuzz

    mkdir -p build/fuzz/findings build/fuzz/logs
    export -f run_fuzzer
    # shellcheck disable=SC2016 # the inner bash expands it
    for name in "${names[@]}"; do
        printf '%s\0%s\0%s\0' "$name" "$seconds" "$(external_seeds_of "$name")"
    done | xargs -0 -n 3 -P 2 bash -c 'run_fuzzer "$@"' bash || true
    fuzzing_verdict "${names[@]}"
}

external_seeds_of() {
    local folder=${ORVELLA_CORPORA:-}/${external_seeds[$1]:-}
    [[ -z ${ORVELLA_CORPORA:-} || -z ${external_seeds[$1]:-} || ! -d $folder ]] || echo "$folder"
}

# Fuzzes on from where the last run ended: run_fuzzer NAME SECONDS EXTERNAL-SEEDS
run_fuzzer() {
    local name=$1 seconds=$2 external=$3
    local corpus=build/fuzz/corpus/$name log=build/fuzz/logs/$name memory
    mkdir -p "$corpus"
    # Settings are written and synced thousands of times a second.
    memory=$(mktemp -d --tmpdir=/dev/shm orvella-fuzz.XXXXXX 2>/dev/null || mktemp -d)
    # Without these limits the address sanitizer's own bookkeeping takes most of the time and the memory.
    TMPDIR=$memory ASAN_OPTIONS=malloc_context_size=4:quarantine_size_mb=32 UBSAN_OPTIONS=print_stacktrace=1 \
        "build/fuzz/fuzzers/${name}Fuzzer" -max_total_time="$seconds" -timeout=10 -max_len=4096 -print_final_stats=1 \
        -dict="fuzz/words/$name" -artifact_prefix="build/fuzz/findings/$name-" \
        "$corpus" "fuzz/seeds/$name" ${external:+"$external"} >"$log" 2>&1 || echo "$name ended with $?" >>"$log"
    rm -rf "$memory"
    echo "$name: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") inputs, $(
        grep -ao 'cov: [0-9]* ft: [0-9]*' "$log" | tail -n 1)"
}

fuzzing_verdict() {
    local name unfinished=()
    for name in "$@"; do
        # A fuzzer that has tried nothing has shown nothing.
        if grep -q "^$name ended with" "build/fuzz/logs/$name" \
            || ! grep -q '^stat::number_of_executed_units: *[1-9]' "build/fuzz/logs/$name"; then
            unfinished+=("$name")
        fi
    done
    ((${#unfinished[@]} == 0)) || {
        for name in "${unfinished[@]}"; do
            grep -a -m 1 -A 20 -E '^This does not hold|ERROR:|runtime error:' "build/fuzz/logs/$name" | cut -c 1-300
        done
        fail "fuzzing found something: $(printf '%s ' "${unfinished[@]}" build/fuzz/findings/*)(see build/fuzz/logs)"
    }
    echo "fuzz: no finding in $*"
}
