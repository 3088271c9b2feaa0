# Shared by all scripts of the house; sourced, never run. Changes into the project's root directory and keeps in
# CALLER_DIR where the caller stood.
# shellcheck shell=bash

set -euo pipefail

CALLER_DIR=$PWD
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
# shellcheck disable=SC2034 # for the scripts that source this
readonly CALLER_DIR ROOT
cd "$ROOT"

# Where the product lives, unless the caller says otherwise.
export NORHOME="${NORHOME:-$ROOT/examples/home}"
export KOLT_HOME="${KOLT_HOME:-$ROOT/examples/home}"

say() { printf '%s\n' "$*" >&2; }

die() {
    say "$*"
    exit 1
}

has_display() { [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]; }

# Without a display the toolkit draws into memory; without a UTF-8 locale it would complain at every start.
prepare_environment() {
    if ! has_display; then
        export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"
    fi
    if [[ "$(locale charmap 2>/dev/null)" != UTF-8 ]]; then
        export LC_ALL=de_DE.UTF-8
    fi
}

# as_root COMMAND...: runs it with the rights that installing needs.
as_root() {
    if [[ $EUID -eq 0 ]]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "Root rights are needed for: $*"
    fi
}

# quietly LOG COMMAND...: keeps the output in LOG and shows it only when the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" >"$log" 2>&1; then
        cat "$log" >&2
        say "Failed: $* (see $log)"
        return 1
    fi
}

# True when the preset is configured and nothing is left to compile.
is_built() {
    local dir=build/$1
    [[ -f $dir/build.ninja && ! CMakePresets.json -nt $dir/build.ninja ]] || return 1
    grep -q 'no work to do' < <(ninja -C "$dir" -n 2>/dev/null)
}

# build_preset NAME [--reconfigure]: configures and builds, with one line of output unless something goes wrong.
build_preset() {
    local preset=$1
    if [[ ${2:-} != --reconfigure ]] && is_built "$preset"; then
        return 0
    fi
    say "Building $preset ..."
    quietly "build/log/$preset-configure.log" cmake --preset "$preset" || return 1
    quietly "build/log/$preset-build.log" cmake --build --preset "$preset"
}

# tracked_files PATTERN...: the files under version control, or all of them in an unpacked archive without history.
tracked_files() {
    if git -c safe.directory="$ROOT" rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        git -c safe.directory="$ROOT" ls-files -- "$@"
    else
        local pattern
        for pattern in "$@"; do
            find . -path ./build -prune -o -name "$pattern" -printf '%P\n'
        done
    fi | while IFS= read -r file; do
        if [[ -f $file ]]; then printf '%s\n' "$file"; fi
    done | LC_ALL=C sort
}
