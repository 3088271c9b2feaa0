#!/usr/bin/env bash
# fuzz.sh [SECONDS]: runs every fuzz target, 60 seconds each unless told otherwise, from its seeds in
# tests/fuzz/seeds/<target>/. What breaks one is kept in build/fuzz-findings/.
# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

readonly FINDINGS=build/fuzz-findings

# The corpus grows while fuzzing, so it is a copy of the seeds.
run_target() {
    local target=$1 seconds=$2 name corpus code=0
    name=$(basename "$target")
    corpus=$(mktemp -d)
    if [[ -d tests/fuzz/seeds/$name ]]; then
        cp -R "tests/fuzz/seeds/$name/." "$corpus/"
    fi
    echo "Fuzzing $name for $seconds s from $(find "$corpus" -type f | wc -l) seeds ..."
    "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 -verbosity=0 \
        -artifact_prefix="$FINDINGS/$name-" "$corpus" || code=$?
    rm -rf "$corpus"
    if [[ $code -ne 0 ]]; then
        echo "$name: failed, see $FINDINGS"
        return 1
    fi
    echo "$name: clean."
}

main() {
    local target targets=() code=0
    scripts/install.sh fuzz
    export QT_QPA_PLATFORM=offscreen
    export LSAN_OPTIONS="suppressions=$ROOT/tests/lsan.supp:print_suppressions=0"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
    prepare_environment
    build_preset fuzz
    mkdir -p "$FINDINGS"
    mapfile -t targets < <(find build/fuzz/tests/fuzz -maxdepth 1 -type f -executable | LC_ALL=C sort)
    [[ ${#targets[@]} -gt 0 ]] || die "No fuzz target in build/fuzz/tests/fuzz."
    for target in "${targets[@]}"; do
        run_target "$target" "${1:-60}" || code=1
    done
    return "$code"
}

main "$@"
