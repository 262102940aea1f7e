#!/usr/bin/env bash
# Installs a build into a scratch folder and removes it again: nothing may be left, and what others put there stays.
#   scripts/check-uninstall.sh BUILD_DIR
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
prefix=$(mktemp -d)
manifest=$1/install_manifest.txt
trap 'rm -rf "$prefix"' EXIT

# The manifest of an installation that somebody made stays theirs.
[ ! -e "$manifest" ] || cp -p "$manifest" "$prefix.manifest"
cmake --install "$1" --prefix "$prefix/all" >/dev/null
[ ! -e "$prefix.manifest" ] || mv "$prefix.manifest" "$manifest"

[ -x "$prefix/all/bin/qor-limiter" ] || { echo "nothing was installed" >&2; exit 1; }
touch "$prefix/all/bin/somebody-elses"
"$here/uninstall.sh" "$prefix/all" >/dev/null
left=$(cd "$prefix/all" && find . -mindepth 1 | sort | tr '\n' ' ')
[ "$left" = "./bin ./bin/somebody-elses " ] || { echo "left behind or taken too much: $left" >&2; exit 1; }
