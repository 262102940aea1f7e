#!/usr/bin/env bash
# Runs the plug-in in Ardour without a window and compares what it does with the command line: the level at the meter,
# a session saved and loaded by another process, a recording bounced through the plug-in.
#   scripts/host-tests/ardour.sh [BUILD DIR [FORMAT]]        default: build/release LV2
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "${1:-build/release}")
format=${2:-LV2}
cli=$build/src/hosts/cli/qor-limiter
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() { echo "FAILED: $*" >&2; exit 1; }

# The host's settings and caches are this run's own.
export HOME=$work/home XDG_CONFIG_HOME=$work/home/.config XDG_CACHE_HOME=$work/home/.cache
mkdir -p "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME"
export SESSION=$work/session FMT=$format ID
case $format in
  LV2)
    export LV2_PATH=$build/lv2
    ID=urn:qor:limiter
    ;;
  VST3) # found below the home folder, and through the cache that the scanner fills
    mkdir -p "$HOME/.vst3"
    cp -a "$build/vst3/qor-limiter.vst3" "$HOME/.vst3/" # with its times: the cache must be the newer one
    LD_LIBRARY_PATH=/usr/lib/ardour7 timeout -k 2 60 /usr/lib/ardour7/ardour-vst3-scanner -f -v \
      "$HOME/.vst3/qor-limiter.vst3" >"$work/scan.log" 2>&1 || { tail -20 "$work/scan.log" >&2; fail "the VST3 scan"; }
    ID=$(sed -n 's/.*<VST3Info uid="\([^"]*\)".*/\1/p' "$work/scan.log")
    [ -n "$ID" ] || { tail -20 "$work/scan.log" >&2; fail "the VST3 scan finds no plug-in"; }
    ;;
  *) fail "format $format: LV2 and VST3 are known" ;;
esac

names=(attack release threshold knee trim mix mode bypass audition inputfilterhp inputfilterlp finallimiter)
# Moved one by one in the host's order, the threshold keeps the law it was set under: here that of the default knee.
export LIVE="0.3 0.2 0.35 0.4 0.6 0.9 0 0 0 0 1 1"
export KEPT="0.2 0.45 0.3 0.8 0.7 0.85 2 0 1 0.15 0.8 1"

# settings VALUES: as arguments for the command line. The knee comes first, as the threshold is set under its law; a
# recalled session sounds the same.
settings() {
  local values i
  read -ra values <<<"$1"
  for i in 3 0 1 2 4 5 6 7 8 9 10 11; do
    printf -- '--set\n%s=%s\n' "${names[$i]}" "${values[$i]}"
  done
}
# limit IN OUT VALUES
limit() {
  local arguments
  mapfile -t arguments < <(settings "$3")
  "$cli" render "$1" -o "$2" --format float "${arguments[@]}" >"$work/render.log" 2>&1 ||
    { cat "$work/render.log" >&2; fail "qor-limiter render"; }
}
# in_host PHASE
in_host() {
  PHASE=$1 timeout -k 2 60 ardour7-lua scripts/host-tests/ardour.lua >"$work/$1.log" 2>&1 </dev/null || true
  grep -a '^ok: ' "$work/$1.log" || true
  grep -aq "^ok: $2\$" "$work/$1.log" || { tail -30 "$work/$1.log" >&2; fail "Ardour ($1)"; }
}

echo "== level and recording"
sox -n -r 48000 -c 2 -e floating-point -b 32 "$work/dc.wav" synth 4 sine 0 gain -n -200 dcshift 0.5
limit "$work/dc.wav" "$work/dc-limited.wav" "$LIVE"
LEVEL=$(sox "$work/dc-limited.wav" -n trim 3 stats 2>&1 | awk '/^Pk lev dB/ { print $4 }')
export LEVEL
[ -n "$LEVEL" ] || fail "no level computed"
in_host record "recorded and saved"
frames=$(sed -n 's/^frames //p' "$work/record.log")

echo "== recall and bounce"
# A real recording takes the place of what was recorded, as long and in the same format.
source=$(scripts/demo-recording.sh)
sox "$source" -r 48000 -e floating-point -b 32 "$work/in.wav" gain -1 rate trim 0 "${frames}s"
[ "$(soxi -s "$work/in.wav")" = "$frames" ] || fail "the recording is too short"
audio=$SESSION/interchange/session/audiofiles
channel=0
for side in L R; do
  channel=$((channel + 1))
  recorded=("$audio"/*%"$side".wav)
  if [ ! -f "${recorded[0]}" ] || [ ${#recorded[@]} != 1 ]; then
    fail "no recorded file for $side"
  fi
  sox "$work/in.wav" "$work/side.wav" remix $channel
  mv "$work/side.wav" "${recorded[0]}"
done
in_host recall bounced
limit "$work/in.wav" "$work/limited.wav" "$KEPT"
sndfile-interleave "$audio/bounced%L.wav" "$audio/bounced%R.wav" -o "$work/bounced.wav" >/dev/null
sndfile-cmp "$work/limited.wav" "$work/bounced.wav" || fail "the bounced file and the command line's differ"
sndfile-cmp "$work/in.wav" "$work/bounced.wav" >/dev/null && fail "the limiter did nothing"
echo "bounced file: bit-identical"
echo "== Ardour ($format): all checks passed"
