#!/usr/bin/env bash
# Renders a recording once with each factory preset and prints the table of docs/presets.md:
#   scripts/measure-presets.sh [QOR-LIMITER [RECORDING]]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
program=${1:-$here/../build/release/src/hosts/cli/qor-limiter}
recording=${2:-$("$here/demo-recording.sh")}
presets="$here/../resources/QOR Limiter Folder/Library/Factory Presets"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# One line of the program's summary as a number.
figure() { sed -n "s/^$1: \([-0-9.inf]*\) .*/\1/p" "$work/summary"; }

echo "| Preset | Peak | Loudness | Peak reduction |"
echo "|---|---|---|---|"
for file in "$presets"/*.plist; do
  "$program" render "$recording" -o "$work/out.wav" --preset "$file" >"$work/summary"
  awk -v name="$(basename "$file" .plist)" \
    -v p0="$(figure 'input peak')" -v p1="$(figure 'output peak')" \
    -v l0="$(figure 'input loudness')" -v l1="$(figure 'output loudness')" \
    'BEGIN { printf "| %s | %+.1f dB | %+.1f LU | %.1f dB |\n", name, p1 - p0, l1 - l0, (p0 - l0) - (p1 - l1) }'
done
