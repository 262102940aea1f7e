#!/usr/bin/env bash
# Installs what a list of Debian packages names and this machine lacks.
#   scripts/install-packages.sh [LIST...]        default: scripts/packages.txt
# Needs root or sudo only if something is missing.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
[ $# -gt 0 ] || set -- "$here/packages.txt"

installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

missing=()
while read -r name _; do
  case "$name" in "" | \#*) continue ;; esac
  installed "$name" || missing+=("$name")
done < <(cat "$@")

[ ${#missing[@]} -eq 0 ] && exit 0

run=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "These packages are missing, and installing them needs root or sudo: ${missing[*]}" >&2
    exit 1
  }
  run=(sudo)
fi
echo "Installing: ${missing[*]}" >&2
export DEBIAN_FRONTEND=noninteractive
"${run[@]}" apt-get update -q >&2
"${run[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}" >&2
