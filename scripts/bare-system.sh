# A bare Debian 12 below a scratch folder, for scripts that prove something on a machine without anything on it.
# To be sourced. Sets `root`; the folder goes when the script ends, unless `keep` is set. Needs root and debootstrap.
# The machine's own package sources and keyrings are used inside; nothing is installed outside the folder.

name=$(basename "$0")
[ "$(id -u)" -eq 0 ] || { echo "$name: needs root (debootstrap and chroot)" >&2; exit 1; }
command -v debootstrap >/dev/null || "$top/scripts/install-packages.sh" <(echo debootstrap)

# The first mirror that this machine's own sources name for the release.
mirror=$(apt-get indextargets --format '$(SITE) $(RELEASE)' 2>/dev/null | awk '$2 == "bookworm" { print $1; exit }')
[ -n "$mirror" ] || { echo "$name: no source for Debian 12 (bookworm) is configured" >&2; exit 1; }

root=$(mktemp -d "${TMPDIR:-/tmp}/qor-bare.XXXXXX")
remove_bare_system() {
  for mount in dev proc; do
    if mountpoint -q "$root/$mount"; then umount -l "$root/$mount"; fi
  done
  [ -n "${keep:-}" ] && echo "kept: $root" >&2 || rm -rf --one-file-system "$root"
}
trap remove_bare_system EXIT

debootstrap --variant=minbase bookworm "$root" "$mirror" >"$root.log" 2>&1 ||
  { tail -5 "$root.log" >&2; exit 1; }
rm -f "$root.log"
cp /etc/resolv.conf "$root/etc/resolv.conf"
rm -f "$root/etc/apt/sources.list"
for source in /etc/apt/sources.list /etc/apt/sources.list.d/debian*; do
  [ -f "$source" ] && cp "$source" "$root${source}"
done
cp -a /usr/share/keyrings/debian-archive-*.gpg "$root/usr/share/keyrings/" 2>/dev/null || true
cp -a /etc/apt/trusted.gpg.d/. "$root/etc/apt/trusted.gpg.d/" 2>/dev/null || true
mount -t proc proc "$root/proc"
mount --rbind /dev "$root/dev"
mount --make-rslave "$root/dev" # so that unmounting here never reaches the machine's own /dev

# inside COMMAND: by the bare system's own shell, without anything of this machine's environment.
inside() {
  chroot "$root" /usr/bin/env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin TERM=dumb LANG=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive bash -o pipefail -c "$1"
}
