#!/usr/bin/env bash
# Runs the built program with a JACK server and a display that nobody hears and sees: sound, signals, a lost server.
#   scripts/host-tests/standalone.sh [BUILD DIR]        default: build/release
# With PICTURES set to a folder, screenshots are left there.
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
export JACK_DEFAULT_SERVER=qor-limiter-test-$$ XDG_STATE_HOME=$work/state HOME=$work
mkdir -p "$work/state/qor-limiter"

fail() { echo "FAILED: $*" >&2; cat "$work"/*.log >&2 2>/dev/null || true; exit 1; }
eventually() { # COMMAND...: until it succeeds, for ten seconds at most
  for _ in $(seq 100); do
    "$@" >/dev/null 2>&1 && return 0
    sleep 0.1
  done
  return 1
}
start_server() {
  jackd -n "$JACK_DEFAULT_SERVER" -r -d dummy -r 48000 -p 256 >"$work/jack.log" 2>&1 &
  server=$!
  pids+=("$server")
  eventually jack_lsp || fail "jackd does not come up"
}
start_app() { # ARGUMENTS...
  "$app" "$@" >"$work/app.log" 2>&1 &
  program=$!
  pids+=("$program")
}
has_ports() { [ "$(jack_lsp | grep -c "^$1:")" = 4 ]; }
picture() { [ -z "${PICTURES:-}" ] || { mkdir -p "$PICTURES"; import -window root "$PICTURES/$1.png"; }; }

echo "== sound"
round=0
source=$(scripts/demo-recording.sh)
sox "$source" -r 48000 -e floating-point -b 32 "$work/in.wav" trim 0 5
start_server
for settings in "" "threshold=0.35 attack=0.3 release=0.4 mode=1 finallimiter=0" "threshold=0.25 mode=2 finallimiter=1"; do
  arguments=()
  for setting in $settings; do arguments+=(--set "$setting"); done
  "$cli" render "$work/in.wav" -o "$work/cli.wav" "${arguments[@]}" >/dev/null
  "$cli" state save "$work/state/qor-limiter/app-state.plist" "${arguments[@]}"
  start_app --backend jack
  eventually has_ports qor-limiter || fail "the program's ports do not appear"
  "$probe" "$work/in.wav" "$work/cli.wav" qor-limiter || fail "the program and the command line differ ($settings)"
  picture "sound-$((round += 1))"
  kill -TERM $program
  wait $program || fail "SIGTERM does not end the program with status 0"
  eventually bash -c '! jack_lsp | grep -q ^qor-limiter:' || fail "the program's ports stay behind"
done

echo "== connections"
start_app --connect --name elsewhere
eventually has_ports elsewhere || fail "the program's ports do not appear under the name it is given"
eventually bash -c 'jack_lsp -c elsewhere:out_left | grep -q system:playback_1' || fail "--connect joins no playback port"
eventually bash -c 'jack_lsp -c elsewhere:in_right | grep -q system:capture_2' || fail "--connect joins no capture port"
"$app" --list-devices | grep -q 'playback: system:playback_1' || fail "--list-devices does not show the server's ports"

echo "== a server that goes"
kill -KILL "$server"
wait "$server" 2>/dev/null || true
eventually grep -q 'the JACK server has gone. The editor works on without sound.' "$work/app.log" ||
  fail "the program does not say that the server has gone"
sleep 1
kill -0 $program || fail "the program has ended with the server"
picture lost-server
start_server
eventually has_ports elsewhere || fail "the program does not join the server that is back"
eventually bash -c 'jack_lsp -c elsewhere:out_left | grep -q system:playback_1' || fail "the connections do not come back"
kill -TERM "$server" # which frees its place among the machine's servers, too
wait "$server" 2>/dev/null || true
eventually bash -c "[ \$(grep -c 'the JACK server has gone' '$work/app.log') = 2 ]" ||
  fail "the program does not say that the server has gone again"
kill -TERM $program
wait $program || fail "SIGTERM does not end the program with status 0 after the server has gone"

echo "== no server"
start_app
eventually grep -q 'The editor works without sound.' "$work/app.log" || fail "the program does not say that there is no sound"
sleep 1
picture no-sound
kill -INT $program
wait $program || fail "SIGINT does not end the program with status 0"

echo "== no display"
status=0
DISPLAY='' "$app" --backend none 2>"$work/errors" || status=$?
[ $status = 1 ] || fail "status $status without a display"
grep -q 'there is no display' "$work/errors" || fail "nothing is said about the missing display"
echo "== standalone: all checks passed"
