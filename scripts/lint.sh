#!/usr/bin/env bash
# Formatting and static checks over the tracked sources. Needs a configured and built tree.
#   scripts/lint.sh [BUILD DIR]        default: build/release
# Runs clang-format on everything, and clang-tidy on the project's own translation units.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/release}

echo "== clang-format"
git ls-files -z '*.h' '*.cpp' '*.c' | xargs -0 -r clang-format --dry-run --Werror

echo "== clang-tidy"
git ls-files -z 'src/*.cpp' | xargs -0 -r -n 4 -P "$(nproc)" clang-tidy --quiet -p "$build" --extra-arg=-Wno-unknown-warning-option 2>&1 |
  { grep -vE '^[0-9]+ warnings? (generated|treated)|^Suppressed|^Use -header-filter' || true; }
