#!/usr/bin/env bash
# Installs the package on a bare Debian 12 without build tools: hosts' scanners find every format, the command line
# limits a file, and removing the package leaves nothing behind. Needs root.
#   scripts/host-tests/package.sh [BUILD DIR]        default: build/release
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
build=$(realpath "${1:-$top/build/release}")

fail() { echo "FAILED: $*" >&2; exit 1; }

echo "== package"
cmake --build "$build" --target products
(cd "$build" && rm -f ./*.deb && cpack --config CPackConfig.cmake >/dev/null) || fail cpack
package=$(ls "$build"/*.deb)
dpkg-deb --show --showformat '${Package} ${Version} ${Architecture}, ${Installed-Size} KiB\n' "$package"

. "$top/scripts/bare-system.sh"
listing() { # what lies in the system, apart from what the package manager keeps for itself
  inside "find / -xdev \( -path /proc -o -path /dev -o -path /tmp -o -path /var/log -o -path /var/cache \
    -o -path /var/lib/apt -o -path /var/lib/dpkg -o -path /etc/ld.so.cache \) -prune -o -print | sort"
}
# The scanners come first, so that what the package itself needs is what its own installation brings.
inside "apt-get -qq update && apt-get -qq install --no-install-recommends -y lilv-utils qtractor ardour sox \
  >/dev/null 2>&1" || fail "the hosts' packages cannot be installed"
inside 'for tool in cc c++ gcc g++ clang cmake make ninja ld; do
  ! command -v $tool || exit 1
done' || fail "there are build tools"
listing >"$root/tmp/before"

echo "== installation"
cp "$package" "$root/tmp/"
deb=/tmp/$(basename "$package")
inside "apt-get -qq install --no-install-recommends -y $deb >/tmp/install.log 2>&1" ||
  { tail -5 "$root/tmp/install.log" >&2; fail "the package cannot be installed"; }
inside "dpkg --status qor-limiter | grep '^Depends:'"
inside 'for object in $(dpkg -L qor-limiter); do
  [ -f "$object" ] && ldd "$object" 2>/dev/null | grep "not found" && exit 1
done; exit 0' || fail "a library is missing"

echo "== formats"
inside 'lv2ls | grep -x urn:qor:limiter' || fail "the LV2 plug-in is not found"
inside 'lv2info urn:qor:limiter | grep "urn:qor:limiter#ui" >/dev/null' || fail "the LV2 editor is not found"
inside "echo CLAP:/usr/lib/clap/qor-limiter.clap | QT_QPA_PLATFORM=offscreen timeout -k 2 30 \
  \$(dpkg -L qtractor | grep '/qtractor_plugin_scan\$') 2>/dev/null | grep '^CLAP|QOR Limiter|2:2|' | cut -d'|' -f1-5" ||
  fail "the CLAP plug-in is not found"
inside "cd /usr/lib/ardour7 && LD_LIBRARY_PATH=. timeout -k 2 60 ./ardour-vst3-scanner -f -v \
  /usr/lib/vst3/qor-limiter.vst3 2>&1 | grep -o '<VST3Info .* name=.[^>]*'" || fail "the VST3 plug-in is not found"
for place in /usr/lib/clap/ /usr/lib/vst3/ /usr/lib/lv2/; do # where hosts look without being told
  inside "dpkg -L qor-limiter | grep '^$place' >/dev/null" || fail "nothing in $place"
done

echo "== programs"
cp "$("$top/scripts/demo-recording.sh")" "$root/tmp/recording.flac"
inside 'cd /tmp && qor-limiter render recording.flac -o limited.wav --report report.png --set threshold=0.3 >render.log' ||
  fail "qor-limiter render"
inside 'sox /tmp/limited.wav -n stat 2>&1 | grep "Maximum amplitude"'
"$build/src/hosts/cli/qor-limiter" render "$root/tmp/recording.flac" -o "$root/tmp/here.wav" --set threshold=0.3 >/dev/null
cmp "$root/tmp/limited.wav" "$root/tmp/here.wav" || fail "the installed program's result differs from the built one's"
inside 'qor-limiter snapshot /tmp/panel.png >/dev/null && [ -s /tmp/panel.png ]' || fail "qor-limiter snapshot"
inside 'qor-limiter presets | sed -n 1,3p' || fail "qor-limiter presets"
inside 'qor-limiter-app --version && qor-limiter-app --list-devices' || fail qor-limiter-app

echo "== removal"
rm -rf "$root/root/.config" "$root/root/.cache" # the hosts' own
inside "apt-get -qq purge -y --auto-remove qor-limiter >/tmp/remove.log 2>&1" || fail "the package cannot be removed"
listing >"$root/tmp/after"
inside "find / -xdev \( -path /proc -o -path /dev -o -path /tmp \) -prune -o -iname '*qor*limiter*' -print" >"$root/tmp/left"
[ ! -s "$root/tmp/left" ] || { cat "$root/tmp/left" >&2; fail "removal leaves files behind"; }
diff "$root/tmp/before" "$root/tmp/after" || fail "the system is not what it was before"
echo "== package: all checks passed"
