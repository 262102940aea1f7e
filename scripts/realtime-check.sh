#!/usr/bin/env bash
# Checks the render path by clang 22: at compile time that what is marked QOR_NONBLOCKING calls nothing that may block
# (-Wfunction-effects as errors), and at run time, in a host that plays the LV2 and the CLAP plug-in with automation,
# that nothing blocks all the same (-fsanitize=realtime). Both checks are first shown to find what they are for.
#   scripts/realtime-check.sh        needs clang-22 and libclang-rt-22-dev (scripts/packages-hosts.txt)
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/realtime
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() { echo "FAILED: $*" >&2; exit 1; }
command -v clang++-22 >/dev/null || fail "clang++-22 is not there: apt-get install clang-22 libclang-rt-22-dev"

echo "== function effects"
cat >"$work/blocks.cpp" <<'SOURCE'
#include "platform/core/RealTime.h"
int* make() noexcept QOR_NONBLOCKING { return new int; }
SOURCE
if clang++-22 -std=c++20 -Isrc -Wfunction-effects -Werror -fsyntax-only "$work/blocks.cpp" 2>/dev/null; then
  fail "an allocation in a function marked QOR_NONBLOCKING was not found"
fi
cmake --preset realtime >"$work/configure.log" || { cat "$work/configure.log" >&2; fail "cmake"; }
cmake --build --preset realtime --target realtime-player >"$work/build.log" 2>&1 ||
  { grep -A4 'error:' "$work/build.log" >&2 || tail -20 "$work/build.log" >&2; fail "the build"; }
echo "no marked function calls one that may block"

echo "== realtime sanitizer"
# play WHAT: 0 if it played to the end
play() {
  timeout -k 2 120 "$build/tests/hosts/realtime/realtime-player" "$build/lv2/qor-limiter.lv2/qor-limiter-lv2.so" \
    "$build/clap/qor-limiter.clap" "$1" >/dev/null 2>"$work/$1.log" && grep -q 'realtime-player: played' "$work/$1.log"
}
if play control; then
  fail "an allocation within a render call was not found"
fi
grep -q 'RealtimeSanitizer: unsafe-library-call' "$work/control.log" || { cat "$work/control.log" >&2; fail "control"; }
for format in lv2 clap; do
  play $format || { head -40 "$work/$format.log" >&2; fail "$format"; }
  echo "$format: nothing blocked"
done
echo "== real time: all checks passed"
