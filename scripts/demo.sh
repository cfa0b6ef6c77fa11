#!/usr/bin/env bash
# Shows the main job: a page writes its log. scripts/demo.sh [native]
# Without an argument the Windows component runs in the script host (under Wine); with `native`, or
# when the Windows tools cannot be had, a C++ host runs the same page on Linux.
. "$(dirname "$0")/lib.sh"

show_log() {
  echo; echo "--- the log, decoded: $1"
  iconv -f UTF-16 -t UTF-8 "$1" | tr -d '\r'
}

demo_native() {
  need_native
  build native quendal_classic_asp native_host
  local page=$root/build/native/demo
  rm -rf "$page" && mkdir -p "$page"
  echo "--- a C++ host runs the page"
  "$root/build/native/native_host" "$page"
  show_log "$page/LOGS/LOG.TXT"
}

demo_windows() {
  need_windows && build win64 QUENDAL_CLASSIC_ASP && wine_start 64 || return 1
  local page=$root/build/win64/stage/demo folder
  rm -rf "$page" && mkdir -p "$page"
  wine_stage 64 "$root/build/win64/QUENDAL_CLASSIC_ASP.DLL"
  cp "$root/examples/page.vbs" "$page/default.vbs"
  folder=$(wine_path 64)
  wine_run 64 regsvr32 /s "$folder\\QUENDAL_CLASSIC_ASP.DLL"
  echo "--- the script host runs the page"
  wine_run 64 cscript //nologo "$folder\\demo\\default.vbs" "$folder\\demo" | tee "$page/output"
  wine_run 64 regsvr32 /s /u "$folder\\QUENDAL_CLASSIC_ASP.DLL"
  wine_stop 64
  # The script host says nothing of a page that stops in the middle.
  grep -q '^end of page$' "$page/output" || { say "the page did not reach its end"; return 1; }
  show_log "$page/LOGS/LOG.TXT"
}

case ${1:-windows} in
  native) demo_native ;;
  windows)
    if ! demo_windows; then
      say "The Windows component cannot be run here; a C++ host runs the page instead."
      demo_native
    fi ;;
  *) say "usage: $0 [native]"; exit 2 ;;
esac
