#!/usr/bin/env bash
# tidy.sh: clang-tidy over the tracked sources that the tests compile; any warning fails. A file is looked at again
# only when it, a header or the configuration has changed since it was last found clean.
# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

readonly DATABASE=build/tidy/compile_commands.json
readonly STAMPS=build/tidy-stamps
# The targets with a source that includes its own ".moc".
readonly GENERATING=(vlhost_autogen host_tests_autogen)

# What every source depends on, as one number.
shared_key() {
    {
        clang-tidy --version
        tracked_files '*.h' | tr '\n' '\0' | xargs -0r cat
        cat .clang-tidy
    } | sha256sum | cut -d ' ' -f 1
}

# check_file FILE SHARED_KEY: runs in a process of its own, several at a time.
check_file() {
    local file=$1 stamp key output
    stamp=$STAMPS/${file//\//__}.stamp
    key="$2 $(sha256sum <"$file")"
    if [[ -f $stamp && "$(<"$stamp")" == "$key" ]]; then
        return 0
    fi
    rm -f "$stamp"
    if output=$(clang-tidy --quiet -p build/tidy "$file" 2>&1); then
        printf '%s\n' "$key" >"$stamp"
    else
        printf '%s\n%s\n' "clang-tidy: $file" "$output"
        return 1
    fi
}

# How each file is compiled, and what a source includes that the build generates. Nothing else is compiled.
prepare_database() {
    quietly build/log/tidy-configure.log cmake --preset tidy
    quietly build/log/tidy-generate.log ninja -C build/tidy "${GENERATING[@]}"
}

main() {
    local key file sources=() unknown=()
    prepare_database
    mkdir -p "$STAMPS"
    key=$(shared_key)
    while IFS= read -r file; do
        if grep -qF "\"file\": \"$ROOT/$file\"" "$DATABASE"; then
            sources+=("$file")
        else
            unknown+=("$file")
        fi
    done < <(tracked_files '*.cpp')
    if [[ ${#unknown[@]} -gt 0 ]]; then
        echo "Not compiled by the tests, hence not checked: ${unknown[*]}"
    fi
    if [[ ${#sources[@]} -gt 0 ]]; then
        printf '%s\0' "${sources[@]}" | xargs -0 -P "${TIDY_JOBS:-2}" -I '{}' "$ROOT/scripts/tidy.sh" --file '{}' "$key"
    fi
    echo "${#sources[@]} files clean."
}

if [[ ${1:-} == --file ]]; then
    check_file "$2" "$3"
else
    main
fi
