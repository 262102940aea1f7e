#!/usr/bin/env bash
# Installs what is missing, builds (Release) and runs every test.
#   ./test.sh [CTEST OPTIONS...]        for instance: ./test.sh -R Limiter1
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-packages.sh
cmake --preset release
cmake --build --preset release
ctest --preset release -j "$(nproc)" "$@"
