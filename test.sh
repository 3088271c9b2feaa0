#!/usr/bin/env bash
# test.sh [--quick] [--long] [--fuzz]: every check of the house. The last line says how it ended.
#   --quick  formatting, the dev build and its tests only
#   --long   the storms of file operations in full, by the dev build
#   --fuzz   additionally every fuzz target for a minute
# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

passed=()
failed=()
times=()

# step NAME COMMAND...: runs a check in its own shell and notes the outcome; the steps after it run in any case.
step() {
    local name=$1 code=0 start=$SECONDS
    shift
    printf '\n== %s\n' "$name"
    set +e
    (
        set -e
        "$@"
    )
    code=$?
    set -e
    times+=("$name: $((SECONDS - start)) s")
    if [[ $code -eq 0 ]]; then passed+=("$name"); else failed+=("$name"); fi
}

check_formatting() {
    local files
    mapfile -t files < <(tracked_files '*.cpp' '*.h')
    if [[ ${#files[@]} -gt 0 ]]; then
        clang-format --dry-run -Werror "${files[@]}"
    fi
    echo "${#files[@]} files checked."
}

# The sources of a target are compiled in groups under the sanitizers. Two that only clash with each other are no error.
build_sanitized() {
    build_preset asan && return 0
    say "Once more, each source by itself; where that succeeds, the names that clash want a second word ..."
    quietly build/log/asan-configure.log cmake --preset asan -D CMAKE_UNITY_BUILD=OFF
    quietly build/log/asan-build.log cmake --build --preset asan
}

build_and_test() {
    if [[ $1 == asan ]]; then build_sanitized; else build_preset "$1"; fi
    ctest --preset "$1" --output-on-failure --no-tests=error
}

# Without a limit of time: the slower the disk, the longer the storms.
test_storms() {
    local program
    build_preset dev
    for program in watch/watch_tests shelltree/shelltree_tests; do
        VELMORA_LONG_TESTS=1 QT_QPA_PLATFORM=offscreen "build/dev/tests/$program" --gtest_brief=1 \
            --gtest_filter='*Storm*:ToolsTest.*'
    done
}

finish() {
    local seconds=$SECONDS
    printf '\n%s\n' "$(join "${times[@]}")"
    if [[ ${#failed[@]} -gt 0 ]]; then
        printf 'test.sh: FAILED: %s (passed: %s) after %d s\n' \
            "$(join "${failed[@]}")" "$(join "${passed[@]:-nothing}")" "$seconds"
        exit 1
    fi
    printf 'test.sh: all passed: %s, in %d s\n' "$(join "${passed[@]}")" "$seconds"
}

join() {
    local IFS=,
    local text="$*"
    printf '%s' "${text//,/, }"
}

main() {
    local quick=no long=no fuzz=no argument
    for argument in "$@"; do
        case $argument in
            --quick) quick=yes ;;
            --long) long=yes ;;
            --fuzz) fuzz=yes ;;
            *) die "usage: test.sh [--quick] [--long] [--fuzz]" ;;
        esac
    done
    scripts/install.sh test
    prepare_environment
    step "formatting" check_formatting
    step "dev tests" build_and_test dev
    if [[ $quick == no ]]; then
        step "sanitizer tests" build_and_test asan
        step "clang-tidy" scripts/tidy.sh
    fi
    if [[ $long == yes ]]; then
        step "long storms" test_storms
    fi
    if [[ $fuzz == yes ]]; then
        step "fuzzing" scripts/fuzz.sh
    fi
    finish
}

main "$@"
