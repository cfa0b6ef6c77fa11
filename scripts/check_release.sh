#!/usr/bin/env bash
# Tries the two commands of the README on a Debian release: scripts/check_release.sh RELEASE [all]
# Makes that release in a folder beside the 32-bit one, as fresh as it is installed, puts the last
# commit into it, and runs scripts/demo.sh and scripts/test.sh there (with `all`, every test). The
# folder is kept, with what these have installed, until `scripts/check_release.sh --forget RELEASE`.
. "$(dirname "$0")/lib.sh"

usage() { say "usage: $0 [--forget] RELEASE [all]"; exit 2; }
forget=
[ "${1:-}" != --forget ] || { forget=1; shift; }
[[ ${1:-} =~ ^[a-z]+$ ]] && [[ ${2:-} =~ ^(all)?$ ]] || usage
release=$1 tests=${2:-}
folder=$cache/$release

unmount() {
  local part
  for part in dev/shm proc; do
    ! mountpoint -q "$folder/$part" || as_root umount -l "$folder/$part"
  done
}
inside() { as_root chroot "$folder" /usr/bin/env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"; }

unmount
if [ -n "$forget" ]; then as_root rm -rf "$folder"; exit; fi
need debootstrap git
if [ ! -f "$folder/.complete" ]; then
  say "making Debian $release in $folder"
  mkdir -p "$cache"
  as_root rm -rf "$folder"
  as_root debootstrap --variant=minbase "$release" "$folder" >"$cache/$release.log" 2>&1 ||
    { tail -n 5 "$cache/$release.log" >&2; exit 1; }
  as_root touch "$folder/.complete"
fi
trap unmount EXIT
as_root mount -t proc proc "$folder/proc"
as_root mount -t tmpfs tmpfs "$folder/dev/shm"
as_root cp -L /etc/resolv.conf /etc/hosts "$folder/etc" 2>/dev/null || true

as_root rm -rf "$folder/quendal"
as_root git clone -q "$root" "$folder/quendal"
status=0
for command in demo.sh "test.sh $tests"; do
  say "== Debian $release: scripts/$command"
  inside bash -c "cd /quendal && scripts/$command" || { status=1; say "scripts/$command FAILED"; }
done
inside bash -c '
  . /etc/os-release
  echo "$PRETTY_NAME: $(g++ --version | head -n 1)"
  x86_64-w64-mingw32-g++-posix --version | head -n 1
  wine --version 2>/dev/null' || status=1
exit "$status"
