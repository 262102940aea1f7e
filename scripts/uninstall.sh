#!/usr/bin/env bash
# Removes what `cmake --install` put below a prefix, and the folders that are empty then.
#   scripts/uninstall.sh [PREFIX]               default: /usr/local
# Presets and settings of users stay. Never meant for /usr, where packages are removed by the package manager.
set -euo pipefail
prefix=${1:-/usr/local}

removed=
for place in bin/qor-limiter bin/qor-limiter-app lib/clap/qor-limiter.clap lib/lv2/qor-limiter.lv2 \
  lib/vst3/qor-limiter.vst3 share/qor-limiter share/doc/qor-limiter share/man/man1/qor-limiter.1.gz \
  share/man/man1/qor-limiter-app.1.gz share/applications/org.qrvk.qor-limiter.desktop \
  share/metainfo/org.qrvk.qor-limiter.metainfo.xml share/icons/hicolor/scalable/apps/org.qrvk.qor-limiter.svg; do
  [ -e "$prefix/$place" ] || continue
  rm -rf -- "${prefix:?}/$place"
  echo "removed: $prefix/$place"
  removed=yes
  (cd "$prefix" && rmdir -p --ignore-fail-on-non-empty -- "$(dirname "$place")")
done
[ -n "$removed" ] || echo "nothing of QOR Limiter lies below $prefix" >&2
