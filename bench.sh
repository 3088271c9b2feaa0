#!/usr/bin/env bash
# bench.sh [FILTER]: builds release and prints one line per measure; exits 1 when a measure is over its limit.
# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

scripts/install.sh bench
prepare_environment
# The benchmarks are part of the release build only where their library was found while configuring.
if [[ ! -f build/release/bench/velmora-bench ]]; then
    build_preset release --reconfigure
else
    build_preset release
fi
exec build/release/bench/velmora-bench ${1:+"$1"}
