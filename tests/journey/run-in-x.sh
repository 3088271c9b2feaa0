#!/usr/bin/env bash
# run-in-x.sh COMMAND...: runs it on an X server of its own, with a window manager and without the user's settings.
# The exit code is that of COMMAND; everything that was started here is gone afterwards.
set -euo pipefail

readonly SCREEN=1280x960x24
readonly PATIENCE=20 # seconds for the server and the window manager to come up

die() {
    echo "$*" >&2
    exit 1
}

home=$(mktemp -d)
server=
manager=

clean_up() {
    local process
    for process in $manager $server; do
        kill "$process" 2>/dev/null || true
        wait "$process" 2>/dev/null || true
    done
    rm -rf "$home"
}
trap clean_up EXIT

# wait_for WHAT COMMAND...: until COMMAND succeeds.
wait_for() {
    local what=$1 end=$((SECONDS + PATIENCE))
    shift
    until "$@" >/dev/null 2>&1; do
        [[ $SECONDS -lt $end ]] || die "No $what: $(cat "$home/log" 2>/dev/null)"
        sleep 0.1
    done
}

for tool in Xvfb openbox xdotool xprop; do
    command -v "$tool" >/dev/null || die "$tool is missing; scripts/install.sh test installs it."
done

unset WAYLAND_DISPLAY XAUTHORITY
export HOME=$home XDG_CONFIG_HOME=$home/config XDG_CACHE_HOME=$home/cache
export XDG_RUNTIME_DIR=$home/runtime QT_QPA_PLATFORM=xcb
mkdir -m 700 "$XDG_RUNTIME_DIR"

# The server looks for a free display itself and writes its number.
Xvfb -displayfd 3 -screen 0 "$SCREEN" -nolisten tcp -noreset 3>"$home/display" 2>"$home/log" &
server=$!
wait_for "number of a display" grep -q . "$home/display"
DISPLAY=:$(cat "$home/display")
export DISPLAY
wait_for "X server at $DISPLAY" xprop -root

openbox >>"$home/log" 2>&1 &
manager=$!
wait_for "window manager" bash -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'

"$@"
