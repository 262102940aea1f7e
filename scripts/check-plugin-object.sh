#!/usr/bin/env bash
# Checks a plug-in's shared object: it exports exactly the named symbols, and needs neither network nor image libraries.
#   scripts/check-plugin-object.sh OBJECT SYMBOL...
set -euo pipefail
object=$1
shift

exported=$(nm -D --defined-only "$object" | awk '{ print $NF }' | sort)
wanted=$(printf '%s\n' "$@" | sort)
if [ "$exported" != "$wanted" ]; then
  printf 'exported:\n%s\nwanted:\n%s\n' "$exported" "$wanted" >&2
  exit 1
fi
if needed=$(ldd "$object" | grep -E 'libcurl|gdk_pixbuf'); then
  printf 'must not be loaded:\n%s\n' "$needed" >&2
  exit 1
fi
if missing=$(ldd -r "$object" 2>&1 | grep -E 'undefined symbol|not found'); then
  printf '%s\n' "$missing" >&2
  exit 1
fi
