# Sourced by tests of what happens on a machine that has nothing yet: makes a minimal Debian 12 in a folder.
# Needs root and debootstrap. MIRROR names the archive to install from; the default is the first that this system uses.

# make_fresh_debian: the folder's path is in $root afterwards; it goes away at the shell's exit.
make_fresh_debian() {
  local mirror=${MIRROR:-$(apt-get indextargets --format '$(REPO_URI)' 'Codename: bookworm' | head -n 1)}
  root=$(mktemp -d "${TMPDIR:-/tmp}/leafwright-debian.XXXXXX")
  chmod 755 "$root"
  trap remove_fresh_debian EXIT
  debootstrap --variant=minbase bookworm "$root" "$mirror" >"$root.log" 2>&1 || { tail "$root.log" >&2; return 1; }
  mount -t proc proc "$root/proc"
  printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
  chmod +x "$root/usr/sbin/policy-rc.d"
}

remove_fresh_debian() {
  local folder
  for folder in dev/pts proc; do
    ! mountpoint -q "$root/$folder" || umount "$root/$folder"
  done
  rm -rf --one-file-system "$root" "$root.log"
}

# inside COMMAND...: runs it in the fresh system, with nothing of this one's environment.
inside() {
  chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}

say() { printf '== %s\n' "$*"; }
