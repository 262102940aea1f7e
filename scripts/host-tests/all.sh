#!/usr/bin/env bash
# Installs the hosts and checkers that are missing and runs all checks of this folder, one after the other.
#   scripts/host-tests/all.sh [BUILD DIR]        default: build/release
# A check that fails does not keep the others from running. The package is checked as root only.
set -uo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "${1:-build/release}")
scripts/install-packages.sh scripts/packages-hosts.txt || exit 1

failed=()
check() { # SCRIPT ARGUMENTS...
  echo "==== $*"
  "scripts/host-tests/$1" "$build" "${@:2}" || failed+=("$*")
}
check lv2.sh
check lv2-editor.sh
check clap.sh
check qtractor.sh
check ardour.sh LV2
check ardour.sh VST3
check ardour-editor.sh
check standalone.sh
check pipewire.sh
[ "$(id -u)" -ne 0 ] || check package.sh

if [ ${#failed[@]} -gt 0 ]; then
  printf 'FAILED: %s\n' "${failed[@]}" >&2
  exit 1
fi
echo "==== all checks with hosts passed"
