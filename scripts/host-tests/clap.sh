#!/usr/bin/env bash
# Has the built CLAP plug-in scanned by a host from Debian, which loads it, makes an instance and asks for everything.
#   scripts/host-tests/clap.sh [BUILD DIR]        default: build/release
set -euo pipefail
cd "$(dirname "$0")/../.."
build=$(realpath "${1:-build/release}")
object=$build/clap/qor-limiter.clap
scanner=$(dpkg -L qtractor | grep '/qtractor_plugin_scan$')

fail() { echo "FAILED: $*" >&2; exit 1; }

echo "== scan"
found=$(echo "CLAP:$object" | QT_QPA_PLATFORM=offscreen timeout -k 2 30 "$scanner" | grep '^CLAP|') || fail "nothing found"
# Name, audio ports, MIDI ports, controls.
[[ $found == "CLAP|QOR Limiter|2:2|0:0|13:0|"* ]] || fail "found $found"
echo "$found" | cut -d'|' -f1-6
scripts/check-plugin-object.sh "$object" clap_entry || fail "symbols or libraries"
echo "== CLAP: all checks passed"
