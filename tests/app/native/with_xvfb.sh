#!/usr/bin/env bash
# Runs a command on an X server of its own, without a screen.
set -euo pipefail
ready=$(mktemp)
trap 'rm -f "$ready"; kill "${server:-}" 2>/dev/null || true' EXIT
Xvfb -displayfd 3 -screen 0 1600x1200x24 -nolisten tcp 3>"$ready" 2>/dev/null &
server=$!
for _ in $(seq 200); do
    [[ -s $ready ]] && break
    sleep 0.05
done
DISPLAY=":$(cat "$ready")" QT_QPA_PLATFORM=xcb "$@"
