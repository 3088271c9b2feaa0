#!/usr/bin/env bash
# tidy.sh: clang-tidy over the tracked sources that the tests compile; any warning fails. A file is looked at again
# only when it, a header or the configuration has changed since it was last found clean.
# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

main() {
    local files
    mapfile -t files < <(tracked_files '*.cpp' '*.h')
    # How each file is compiled; nothing is.
    quietly build/log/tidy-configure.log cmake --preset tidy
    scripts/tidy.py "${files[@]}"
}

main
