#!/usr/bin/env bash
# Proves the two commands on a bare Debian 12: bootstraps a minimal system into a scratch folder, clones the
# committed tree into it, and runs the commands there under chroot. Needs root and the package debootstrap.
#   scripts/fresh-machine.sh [--keep] [COMMAND...]        default commands: ./test.sh ./run.sh
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)

keep=
[ "${1:-}" = --keep ] && { keep=yes; shift; }
[ $# -gt 0 ] || set -- ./test.sh ./run.sh

. "$top/scripts/bare-system.sh"
git clone -q "$top" "$root/root/qor-limiter"
for command in "$@"; do
  echo "== fresh machine: $command"
  inside "cd /root/qor-limiter && $command"
done
echo "== fresh machine: all commands succeeded"
