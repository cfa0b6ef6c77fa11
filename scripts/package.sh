#!/usr/bin/env bash
# Makes the packages: scripts/package.sh [OUTPUT_FOLDER], by default build/packages.
#   quendal-classic-asp-VERSION-windows.zip             x64 and x86 components, for a server
#   quendal-classic-asp-VERSION.msi                     the same for the Windows installer
#   quendal-classic-asp-VERSION-linux-x86_64.tar.gz     library, headers, CMake and pkg-config files
#   SHA256SUMS                                          of all
# Equal commits give equal bytes, wherever and whenever the packages are made with the same tools:
# files carry the moment of the commit (or SOURCE_DATE_EPOCH).
# scripts/package.sh --check-reproducible makes the packages of the last commit in two clones, with
# no compiler cache between them, and compares.
. "$(dirname "$0")/lib.sh"

# settle FOLDER MOMENT: gives every file the same time and ordinary rights.
settle() {
  chmod -R u=rwX,go=rX "$1"
  find "$1" -exec touch --no-dereference --date="@$2" {} +
}

checksums() { (cd "$1" && find * -type f ! -name SHA256SUMS -print0 | sort -z | xargs -0 sha256sum); }

make_packages() {
  local output=$1 version moment work name
  moment=${SOURCE_DATE_EPOCH:-$(git -C "$root" log -1 --format=%ct)}
  [ -z "$(git -C "$root" status --porcelain 2>/dev/null)" ] ||
    say "note: the tree differs from its last commit, and so may the packages"
  need_native && need_windows && need zip wixl msitools
  build native quendal_classic_asp
  build win64 QUENDAL_CLASSIC_ASP asp_host
  build win32 QUENDAL_CLASSIC_ASP
  version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$root/build/native/CMakeCache.txt")

  umask 022
  mkdir -p "$output"
  rm -f "$output"/quendal-classic-asp-*.{zip,msi,tar.gz}
  work=$(mktemp -d)

  name=quendal-classic-asp-$version-windows
  for preset in win64 win32; do
    cmake --install "$root/build/$preset" --prefix "$work/$name" >/dev/null
  done
  checksums "$work/$name" >"$work/SHA256SUMS" && mv "$work/SHA256SUMS" "$work/$name"
  settle "$work/$name" "$moment"
  # The format has local times.
  (cd "$work" && find "$name" -type f | sort | TZ=UTC zip -q -9 -X -@ "$name.zip")
  make_installer "$work/$name" "$version" "$moment" "$work/quendal-classic-asp-$version.msi"

  name=quendal-classic-asp-$version-linux-x86_64
  cmake --install "$root/build/native" --prefix "$work/$name" --strip >/dev/null
  settle "$work/$name" "$moment"
  tar -C "$work" --sort=name --owner=0 --group=0 --numeric-owner --format=gnu -cf - "$name" |
    gzip -n -9 >"$work/$name.tar.gz"

  mv "$work"/*.{zip,msi,tar.gz} "$output"
  (cd "$output" && sha256sum quendal-classic-asp-* >SHA256SUMS && cat SHA256SUMS)
  rm -rf "$work"
}

check_reproducible() {
  local work status=0
  work=$(mktemp -d)
  git clone -q "$root" "$work/one"
  git clone -q "$work/one" "$work/another/place"
  CCACHE_DISABLE=1 TZ=UTC "$work/one/scripts/package.sh" "$work/packages"
  CCACHE_DISABLE=1 TZ=Asia/Tokyo "$work/another/place/scripts/package.sh" "$work/packages_again"
  diff -r "$work/packages" "$work/packages_again" || status=1
  rm -rf "$work"
  [ "$status" != 0 ] || say "both clones gave the same bytes"
  return "$status"
}

case ${1:-} in
  --check-reproducible) check_reproducible ;;
  -*) say "usage: $0 [OUTPUT_FOLDER | --check-reproducible]"; exit 2 ;;
  *) make_packages "${1:-$root/build/packages}" ;;
esac
