#!/usr/bin/env bash
# Compares the races that ThreadSanitizer is told to accept with the list that docs/realtime.md gives reasons for.
set -euo pipefail
cd "$(dirname "$0")/.."

suppressed=$(sed -n 's/^race:qor:://p' tests/tsan.supp | sort -u)
others='mutex:libX11\.so|race:DISTRHO::PluginVst3::getParameterNormalized' # libraries' faults, with their reasons there
[ "$(grep -cvE "^(#.*|$others)?\$" tests/tsan.supp)" = "$(wc -l <<<"$suppressed")" ] ||
  { echo "tests/tsan.supp holds more than races in the unit and known faults of libraries" >&2; exit 1; }
# The last column of the one table that has it.
# shellcheck disable=SC2016
listed=$(sed -n '/| Suppressed in |$/,/^$/p' docs/realtime.md | awk -F'|' 'NR > 2 { print $5 }' | grep -o '`[^`]*`' |
  tr -d '`' | sort -u)
diff <(echo "$suppressed") <(echo "$listed") >&2 ||
  { echo "tests/tsan.supp (<) and docs/realtime.md (>) differ" >&2; exit 1; }
echo "$(wc -l <<<"$listed") accepted races, each of them listed"
