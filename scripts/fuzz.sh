#!/usr/bin/env bash
# Fuzzes the reading of preset files under AddressSanitizer, on one core; a find ends it with an error.
#   scripts/fuzz.sh [SECONDS]        default: 60
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}

cmake --preset fuzz -DQOR_BUILD_TESTS=OFF -DQOR_BUILD_BENCH=OFF
cmake --build --preset fuzz --target fuzz_presets
finds=build/fuzz/presets-finds # grows from run to run; the repository holds the small start
mkdir -p "$finds"
build/fuzz/fuzz/fuzz_presets -max_total_time="$seconds" -max_len=20000 -timeout=10 -dict=fuzz/presets.dict \
  -artifact_prefix=build/fuzz/ "$finds" fuzz/presets-corpus
