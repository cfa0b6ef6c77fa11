# What the scripts share: installing what a fresh Debian machine lacks, building, and running
# Windows programs. Meant to be sourced.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${QUENDAL_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/quendal-classic-asp}
# File names outside ASCII need a UTF-8 locale.
export LC_ALL=C.UTF-8 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="

say() { printf '%s\n' "$*" >&2; }

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"
  elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then sudo -n "$@"
  else return 1
  fi
}

# need PACKAGE...: installs those that are missing; fails with a message when that cannot be done.
need() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok' || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "installing: ${missing[*]}"
  if ! as_root true; then
    say "These packages are missing, and installing them needs root or sudo: ${missing[*]}"
    return 1
  fi
  local log; log=$(mktemp)
  if { as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}" ||
       { as_root apt-get update &&
         as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; }
     } >"$log" 2>&1; then
    rm -f "$log"
  else
    tail -n 5 "$log" >&2; rm -f "$log"
    say "could not install: ${missing[*]}"
    return 1
  fi
}

need_native() { need g++ cmake ninja-build; }
need_windows() {
  need g++ cmake ninja-build g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix \
    mingw-w64-tools libwine-dev wine wine64 googletest libboost-dev
}

# build PRESET TARGET... [-- CMAKE_ARGUMENT...]: configures and builds; says nothing unless it fails.
# Warnings are errors where a check of the project's own asks for it, by QUENDAL_WARNINGS=errors.
build() {
  local preset=$1; shift
  local targets=() arguments=() strict=OFF
  [ "${QUENDAL_WARNINGS:-}" != errors ] || strict=ON
  while [ $# -gt 0 ] && [ "$1" != -- ]; do targets+=("$1"); shift; done
  [ $# -eq 0 ] || { shift; arguments=("$@"); }
  local log=$root/build/$preset.log
  mkdir -p "$root/build"
  if ! { (cd "$root" && CMAKE_GENERATOR=Ninja cmake --preset "$preset" \
           -DCMAKE_COMPILE_WARNING_AS_ERROR=$strict "${arguments[@]}") &&
         cmake --build "$root/build/$preset" --target "${targets[@]}"; } >"$log" 2>&1; then
    tail -n 40 "$log" >&2
    say "the $preset build failed"
    return 1
  fi
}

# make_installer PACKAGE VERSION MOMENT OUTPUT: the installer's package of an unpacked zip package.
make_installer() {
  cmake -DSOURCE="$root/build/win64/generated/installer.wxs" -DFOLDER="$1" -DVERSION="$2" \
    -DMOMENT="$3" -DOUTPUT="$4" -P "$root/cmake/make_installer.cmake"
}

# A Windows of our own for each build folder. Programs and files are named by their path below it,
# with backslashes. wine_start BITS returns 1 when it cannot be had on this machine, and 2 when it
# does not come up in two tries.
# A script that sets $wine_variant (an addition to the names) has another one beside the usual,
# with a stage folder of its own; wine_forget BITS removes it.
wine_variant=
wine_start() {
  local bits=$1 attempt
  for attempt in 1 2; do
    if [ "$bits" = 64 ]; then mkdir -p "$(wine_folder 64)"; else wine32_start || return 1; fi
    wine_seconds=180 in_wine "$bits" wine wineboot -i >/dev/null 2>&1 || true
    [ "$(wine_run "$bits" cmd /c echo ready)" != ready ] || return 0
    say "win$bits did not come up; trying it from the start"
    in_wine "$bits" wineserver -k9 >/dev/null 2>&1 || true
    wine_forget "$bits"
  done
  return 2
}
wine_forget() {
  if [ "$1" = 64 ]; then rm -rf "$root/build/win64/wine$wine_variant"
  else as_root rm -rf "$wine32_root/root/.wine$wine_variant"
  fi
}
wine_stop() {
  if [ "$1" != 64 ]; then wine32_stop
  elif [ -d "$root/build/win64/wine$wine_variant" ]; then
    in_wine 64 wineserver -k >/dev/null 2>&1 || true
  fi
}

# wine_run BITS PROGRAM ARGUMENT...: runs a Windows program and prints what it printed when it has
# ended. The output takes the way over a file, as services that the program starts along would keep
# a pipe open. A program that takes longer than $wine_seconds (600) is ended, with status 124.
wine_run() {
  local bits=$1 output status=0; shift
  output=$(mktemp)
  in_wine "$bits" wine "$@" >"$output" 2>&1 || status=$?
  tr -d '\r' <"$output"; rm -f "$output"
  [ "$status" != 124 ] || say "did not end in time: $*"
  return "$status"
}

# in_wine BITS COMMAND...: runs a command of the emulation's own, in its stage folder.
in_wine() {
  local bits=$1 limit=(timeout --kill-after=10 "${wine_seconds:-600}"); shift
  if [ "$bits" = 64 ]; then
    (cd "$(wine_folder 64)" &&
      WINEPREFIX=$root/build/win64/wine$wine_variant "${limit[@]}" "$@" </dev/null)
  else
    as_root "${limit[@]}" chroot "$wine32_root" /usr/bin/env -i HOME=/root \
      WINEPREFIX="/root/.wine$wine_variant" STAGE="/quendal$wine_variant" \
      PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 TZ="${TZ:-}" WINEDEBUG=-all \
      WINEDLLOVERRIDES="mscoree,mshtml=" \
      bash -c 'cd "$STAGE" 2>/dev/null; exec "$@"' - "$@" </dev/null
  fi
}

# The 32-bit Windows lives in a Debian of its own, as its packages do not install beside the 64-bit
# ones everywhere.
wine32_root=$cache/wine32
wine32_start() {
  need debootstrap || return 1
  if [ ! -f "$wine32_root/.complete" ]; then
    say "making a 32-bit Debian with wine in $wine32_root (about a minute)"
    mkdir -p "$cache"
    as_root rm -rf "$wine32_root"
    as_root debootstrap --arch=i386 --variant=minbase --include=wine32,wine bookworm \
      "$wine32_root" >"$cache/wine32.log" 2>&1 || { tail -n 5 "$cache/wine32.log" >&2; return 1; }
    as_root touch "$wine32_root/.complete"
  fi
  mountpoint -q "$wine32_root/proc" || as_root mount -t proc proc "$wine32_root/proc"
}
wine32_stop() {
  [ -d "$wine32_root/proc" ] || return 0
  if mountpoint -q "$wine32_root/proc"; then
    in_wine 32 wineserver -k >/dev/null 2>&1 || true
    as_root umount "$wine32_root/proc" 2>/dev/null || as_root umount -l "$wine32_root/proc" || true
  fi
}

# wine_stage BITS FILE...: puts files where that Windows sees them, as its folder "stage".
wine_stage() {
  local bits=$1 stage; shift
  stage=$(wine_folder "$bits")
  if [ "$bits" = 64 ]; then mkdir -p "$stage" && cp -r "$@" "$stage"
  else as_root mkdir -p "$stage" && as_root cp -r "$@" "$stage"
  fi
}
# The stage folder as this system sees it, and as that Windows does.
wine_folder() {
  if [ "$1" = 64 ]; then echo "$root/build/win64/stage$wine_variant"
  else echo "$wine32_root/quendal$wine_variant"
  fi
}
wine_path() {
  if [ "$1" = 64 ]; then printf 'Z:%s\n' "$(wine_folder 64 | tr / '\\')"
  else echo "Z:\\quendal$wine_variant"
  fi
}

# host_start BITS FOLDER OUTPUT ARGUMENT...: lets the page host, which must be staged, serve a
# folder, at $port or at one that is free. Sets host_port; what the host prints goes to
# OUTPUT.output and OUTPUT.errors.
host_start() {
  local bits=$1 folder=$2 output=$3 attempt; shift 3
  : >"$output.output"
  wine_seconds=86400 in_wine "$bits" wine asp_host.exe serve "$folder" --port "${port:-0}" "$@" \
    >"$output.output" 2>"$output.errors" &
  for attempt in $(seq 150); do
    host_port=$(tr -d '\r' <"$output.output" | sed -n 's|.*http://127\.0\.0\.1:\([0-9]*\)/$|\1|p')
    [ -z "$host_port" ] || return 0
    sleep 0.2
  done
  cat "$output.errors" >&2
  say "the page host did not start"
  return 1
}
# host_stop BITS: ends it. Fails when it had ended before.
host_stop() { wine_run "$1" taskkill /f /im asp_host.exe >/dev/null; }
