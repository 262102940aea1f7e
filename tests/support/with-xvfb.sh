#!/usr/bin/env bash
# Runs a command with a display of its own that nobody sees.
#   with-xvfb.sh COMMAND [ARGUMENTS...]
set -euo pipefail
command -v Xvfb >/dev/null || { echo "with-xvfb.sh: Xvfb is missing; install the package xvfb" >&2; exit 1; }
work=$(mktemp -d)
Xvfb -displayfd 3 -screen 0 1600x1200x24 -nolisten tcp -noreset 3>"$work/display" 2>"$work/log" &
server=$!
trap 'kill $server 2>/dev/null || true; wait $server 2>/dev/null || true; rm -rf "$work"' EXIT
for _ in $(seq 200); do
  [ -s "$work/display" ] && break
  kill -0 $server 2>/dev/null || { cat "$work/log" >&2; exit 1; }
  sleep 0.05
done
[ -s "$work/display" ] || { echo "with-xvfb.sh: Xvfb does not come up" >&2; cat "$work/log" >&2; exit 1; }
DISPLAY=:$(cat "$work/display") "$@"
