#!/usr/bin/env bash
# Installs the built plug-ins and programs for this user alone, or removes them again.
#   scripts/install-user.sh [BUILD DIR]             default: build/release
#   scripts/install-user.sh --remove
# ~/.clap, ~/.lv2, ~/.vst3, ~/.local/bin, and the presets below the user's data directory.
set -euo pipefail
cd "$(dirname "$0")/.."
data=${XDG_DATA_HOME:-$HOME/.local/share}/qor-limiter
places=("$HOME/.clap/qor-limiter.clap" "$HOME/.lv2/qor-limiter.lv2" "$HOME/.vst3/qor-limiter.vst3"
  "$HOME/.local/bin/qor-limiter" "$HOME/.local/bin/qor-limiter-app" "$data/resources")

if [ "${1:-}" = --remove ]; then
  rm -rf -- "${places[@]}"
  [ ! -d "$data" ] || rmdir --ignore-fail-on-non-empty -- "$data" # your presets stay
  printf 'removed: %s\n' "${places[@]}"
  exit 0
fi

build=${1:-build/release}
sources=("$build/clap/qor-limiter.clap" "$build/lv2/qor-limiter.lv2" "$build/vst3/qor-limiter.vst3"
  "$build/src/hosts/cli/qor-limiter" "$build/src/hosts/standalone/qor-limiter-app" resources)
for i in "${!places[@]}"; do
  [ -e "${sources[$i]}" ] || continue
  mkdir -p "$(dirname "${places[$i]}")"
  # Beside the target first and moved over it then: a host that has the old file open keeps it whole.
  rm -rf -- "${places[$i]}.new"
  cp -R -- "${sources[$i]}" "${places[$i]}.new"
  rm -rf -- "${places[$i]}"
  mv -- "${places[$i]}.new" "${places[$i]}"
  echo "installed: ${places[$i]}"
done
