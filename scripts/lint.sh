#!/usr/bin/env bash
# Formatting and static checks over the tracked sources. Needs a configured and built tree.
#   scripts/lint.sh [--all] [BUILD DIR]        default: build/release
# Runs clang-format on everything, and clang-tidy on the signal path, the unit and the shared system code; with --all on
# every translation unit of src of our own, which takes a quarter of an hour.
set -euo pipefail
cd "$(dirname "$0")/.."
folders=(src/AUDIO src/AudioUnits src/Common src/TOOLS src/kernel src/unit)
if [ "${1:-}" = --all ]; then
  folders=(src)
  shift
fi
build=${1:-build/release}

echo "== clang-format"
git ls-files -z '*.h' '*.cpp' '*.c' | xargs -0 -r clang-format --dry-run --Werror

echo "== clang-tidy: ${folders[*]}"
# Framework.cpp is the packaged framework's source, which isn't ours to check.
git ls-files -z "${folders[@]/%//*.cpp}" ':!src/hosts/vst3/Framework.cpp' |
  xargs -0 -r -n 2 -P "$(nproc)" clang-tidy --quiet -p "$build" --extra-arg=-Wno-unknown-warning-option 2>&1 |
  { grep -vE '^[0-9]+ warnings? (generated|treated)|^Suppressed|^Use -header-filter' || true; }
