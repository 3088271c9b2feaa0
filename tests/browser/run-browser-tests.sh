#!/usr/bin/env bash
# run-browser-tests.sh [TEST...]: opens exported menus in a browser without a window and works with them.
# The browser has a home and a profile of its own; both are gone afterwards.
# VELMORA_PICTURES names a directory for pictures of the sample menu.
set -euo pipefail

readonly PYTHON=/usr/bin/python3 # the system's, because the packages for it are the system's
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)

die() {
    echo "$*" >&2
    exit 1
}

for tool in chromium chromedriver "$PYTHON"; do
    command -v "$tool" >/dev/null || die "$tool is missing; scripts/install.sh test installs it."
done
for module in selenium lxml; do
    "$PYTHON" -c "import $module" 2>/dev/null ||
        die "The Python module $module is missing; scripts/install.sh test installs it."
done

tests=(menu_test)
if [[ -n ${VELMORA_PICTURES:-} ]]; then
    mkdir -p "$VELMORA_PICTURES"
    VELMORA_PICTURES=$(cd "$VELMORA_PICTURES" && pwd -P)
    tests+=(menu_pictures)
fi
if [[ $# -gt 0 ]]; then tests=("$@"); fi

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home TMPDIR=$home XDG_CONFIG_HOME=$home/config XDG_CACHE_HOME=$home/cache
export PYTHONDONTWRITEBYTECODE=1
cd "$here"
"$PYTHON" -m unittest "${tests[@]}"
