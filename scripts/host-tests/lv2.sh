#!/usr/bin/env bash
# Runs the built LV2 bundle through checkers and hosts from Debian, and compares their output with the command line's.
#   scripts/host-tests/lv2.sh [BUILD DIR]        default: build/release
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "${1:-build/release}")
cli=$build/src/hosts/cli/qor-limiter
bundle=$build/lv2/qor-limiter.lv2
uri=urn:qor:limiter
export LV2_PATH=$build/lv2:/usr/lib/lv2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() { echo "FAILED: $*" >&2; exit 1; }

echo "== description"
lv2_validate "$bundle"/*.ttl >"$work/validate" 2>&1 || { cat "$work/validate" >&2; fail lv2_validate; }
grep -q 'Found 0 errors' "$work/validate" || { cat "$work/validate" >&2; fail "lv2_validate found something"; }
grep -iE '^(warning|error)' "$work/validate" && fail "lv2_validate warns"
# Against the definitions of all vocabularies alone, and once with a break that has to be found.
mapfile -t schemas < <(dpkg -L lv2-dev | grep '\.ttl$')
[ ${#schemas[@]} -gt 20 ] || fail "the vocabularies of lv2-dev are missing"
sord_validate -l "${schemas[@]}" "$bundle"/*.ttl >"$work/sord" 2>&1 || { cat "$work/sord" >&2; fail sord_validate; }
tail -1 "$work/sord"
sed 's/lv2:index 4 /lv2:index "four" /' "$bundle/qor-limiter.ttl" >"$work/broken.ttl"
sord_validate -l "${schemas[@]}" "$bundle/manifest.ttl" "$bundle/presets.ttl" "$work/broken.ttl" >/dev/null 2>&1 &&
  fail "sord_validate takes a port whose index is a word"
LV2_PATH=$build/lv2 lv2info "$uri" >"$work/info" || fail lv2info
grep -q 'Designation:.*enabled' "$work/info" || fail "lv2info shows no enabled designation"

echo "== speed"
LV2_PATH=$build/lv2 lv2bench "$uri" | grep -F "$uri"

echo "== sound"
# A real recording as floats, so that every program reads the same samples and writes all their bits.
source=$(scripts/demo-recording.sh)
sox "$source" -e floating-point -b 32 "$work/in.wav" trim 0 5
for final in 0 1; do
  "$cli" render "$work/in.wav" -o "$work/cli.wav" --block 512 \
    --set threshold=0.35 --set attack=0.3 --set release=0.4 --set mode=1 --set finallimiter=$final >/dev/null
  lv2apply -i "$work/in.wav" -o "$work/apply.wav" -c threshold 0.35 -c attack 0.3 -c release 0.4 -c mode 1 \
    -c final_limiter $final "$uri" >/dev/null
  sndfile-cmp "$work/cli.wav" "$work/apply.wav" || fail "lv2apply and the command line differ (final limiter $final)"
  lv2file -i "$work/in.wav" -o "$work/file.wav" -b 333 -c 1:in_left -c 2:in_right -p threshold:0.35 -p attack:0.3 \
    -p release:0.4 -p mode:1 -p final_limiter:$final "$uri" >"$work/lv2file.log" 2>&1 ||
    { tail -5 "$work/lv2file.log" >&2; fail lv2file; }
  sndfile-cmp "$work/cli.wav" "$work/file.wav" || fail "lv2file and the command line differ (final limiter $final)"
  echo "final limiter $final: bit-identical"
done

echo "== jalv"
export JACK_DEFAULT_SERVER=qor-limiter-lv2-$$
jackd -n "$JACK_DEFAULT_SERVER" -r -d dummy -r 48000 -p 256 >"$work/jack.log" 2>&1 &
jack=$!
trap 'kill $jack 2>/dev/null || true; rm -rf "$work"' EXIT
for _ in $(seq 50); do
  jack_lsp >/dev/null 2>&1 && break
  sleep 0.1
done
{ sleep 1; echo "threshold = 0.25"; sleep 0.5; echo "controls"; sleep 0.5; echo "monitors"; sleep 0.5; } |
  timeout -k 2 10 jalv -t -p -c trim=0.75 "$uri" >"$work/jalv.log" 2>&1 || true
grep -aq 'trim = 0.75' "$work/jalv.log" || { tail -20 "$work/jalv.log" >&2; fail "jalv does not show the control set at its start"; }
grep -aq 'threshold = 0.25' "$work/jalv.log" || { tail -20 "$work/jalv.log" >&2; fail "jalv does not show the control set while running"; }
echo "controls arrive"
echo "== LV2: all checks passed"
