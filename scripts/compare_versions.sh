#!/usr/bin/env bash
# Compares what the two homes tell of the same files: the native build reads version resources with
# the library's own reader, the Windows build (run by Wine) with the system's functions.
#
# Usage: compare_versions.sh NATIVE_PRINT_VERSIONS WINDOWS_PRINT_VERSIONS [FOLDER...]
# Without folders: every PE file of Wine's system folders and of the prefix's windows folder.
# WINEPREFIX names the prefix (default: build/wine); it is made when it does not exist.
set -euo pipefail

if [ $# -lt 2 ]; then
  sed -n '2,8s/^# \{0,1\}//p' "$0" >&2
  exit 2
fi
native=$(realpath "$1")
windows=$(realpath "$2")
shift 2

root=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX=${WINEPREFIX:-$root/build/wine}
export WINEDEBUG=-all
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES-"mscoree,mshtml="}
command -v wine >/dev/null || { echo "compare_versions: wine is not installed" >&2; exit 1; }
if [ ! -d "$WINEPREFIX/drive_c/windows" ]; then
  mkdir -p "$WINEPREFIX"
  timeout --kill-after=10 180 wine wineboot -i >/dev/null 2>&1 </dev/null
  wineserver=$(command -v wineserver || echo /usr/lib/wine/wineserver)
  if [ -x "$wineserver" ]; then "$wineserver" -w; fi
fi

if [ $# -eq 0 ]; then
  shopt -s nullglob
  set -- /usr/lib/wine/*-windows /usr/lib/*/wine/*-windows "$WINEPREFIX/drive_c/windows"
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for folder; do find "$(realpath "$folder")" -type f; done | sort -u >"$work/files"

# Drive Z: is the root folder.
"$native" <"$work/files" >"$work/native"
sed 's/^/Z:/' "$work/files" >"$work/questions"
timeout --kill-after=10 600 wine "$windows" <"$work/questions" >"$work/answers" 2>"$work/messages"
sed 's/\r$//; s/^Z://' "$work/answers" >"$work/windows"

images=$(wc -l <"$work/native")
versions=$(grep -c $'\tversion|' "$work/native" || true)
echo "$images PE files, $versions with a version resource"
if ! diff -u --label native --label windows "$work/native" "$work/windows"; then
  echo "compare_versions: the homes differ in $(diff "$work/native" "$work/windows" | grep -c '^<' || true) files" >&2
  exit 1
fi
if [ "$versions" -eq 0 ]; then
  echo "compare_versions: nothing was compared" >&2
  exit 1
fi
echo "all records are the same"
