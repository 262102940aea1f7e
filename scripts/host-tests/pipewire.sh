#!/usr/bin/env bash
# Runs the built program with a PipeWire server of its own: sound, another sample rate while it runs, a server that
# goes and comes back.
#   scripts/host-tests/pipewire.sh [BUILD DIR]        default: build/release
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "${1:-build/release}")
cli=$build/src/hosts/cli/qor-limiter
app=$build/src/hosts/standalone/qor-limiter-app
probe=$build/tests/hosts/standalone/jack-probe
[ -n "${DISPLAY_GIVEN:-}" ] || DISPLAY_GIVEN=1 exec tests/support/with-xvfb.sh "$0" "$build"

work=$(mktemp -d)
pids=()
trap 'kill "${pids[@]}" 2>/dev/null || true; rm -rf "$work"' EXIT
export HOME=$work XDG_RUNTIME_DIR=$work/run XDG_STATE_HOME=$work/state XDG_CONFIG_HOME=$work/config
mkdir -p "$work/run" "$work/state/qor-limiter"
chmod 700 "$work/run"

fail() { echo "FAILED: $*" >&2; cat "$work"/*.log >&2 2>/dev/null || true; exit 1; }
eventually() { # COMMAND...: until it succeeds, for ten seconds at most
  for _ in $(seq 100); do
    "$@" >/dev/null 2>&1 && return 0
    sleep 0.1
  done
  return 1
}
start_server() {
  pipewire >"$work/pipewire.log" 2>&1 &
  server=$!
  pids+=("$server")
  eventually pw-jack jack_samplerate || fail "PipeWire does not come up"
}
has_ports() { [ "$(pw-jack jack_lsp | grep -c "^qor-limiter:")" = 4 ]; }
said() { grep -qF "$1" "$work/app.log"; }

echo "== sound"
source=$(scripts/demo-recording.sh)
sox "$source" -r 48000 -e floating-point -b 32 "$work/in.wav" trim 0 5
settings=(--set threshold=0.35 --set attack=0.3 --set release=0.4 --set mode=1 --set finallimiter=0)
"$cli" render "$work/in.wav" -o "$work/cli.wav" "${settings[@]}" >/dev/null
"$cli" state save "$work/state/qor-limiter/app-state.plist" "${settings[@]}"
start_server
# The graph runs in real time: large blocks, so that a busy machine loses none.
pw-metadata -n settings 0 clock.force-quantum 8192 >/dev/null
pw-jack "$app" --backend jack >"$work/app.log" 2>&1 &
program=$!
pids+=("$program")
eventually has_ports || fail "the program's ports do not appear"
said 'sound: JACK, 48000 Hz' || fail "the program does not say that it sounds"
pw-jack "$probe" "$work/in.wav" "$work/cli.wav" qor-limiter || fail "the program and the command line differ"

echo "== another sample rate"
pw-metadata -n settings 0 clock.force-rate 96000 >/dev/null
eventually said 'sound: JACK, 96000 Hz' || fail "the program does not follow the server's sample rate"

echo "== a server that goes and comes back"
kill -KILL "$server"
wait "$server" 2>/dev/null || true
eventually said 'the JACK server has gone. The editor works on without sound.' || fail "the loss is not told"
kill -0 $program || fail "the program has ended with the server"
: >"$work/app.log"
start_server
eventually has_ports || fail "the program does not join the server that is back"
kill -TERM $program
wait $program || fail "SIGTERM does not end the program with status 0"
echo "== PipeWire: all checks passed"
