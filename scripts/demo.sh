#!/usr/bin/env bash
# Shows the main job: a page writes its log. scripts/demo.sh [native|serve [PORT]]
# Without an argument the page host (under Wine) runs the first page of examples/site; with `native`,
# or where this machine cannot have the Windows tools, a C++ host runs such a page on Linux. With
# `serve` the whole site can be looked at in a browser. What is built and does not work is a failure.
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
  : >"$page/default.asp"  # its name stands in the log; the host itself does what it would do
  echo "--- a C++ host runs the page"
  "$root/build/native/native_host" "$page"
  show_log "$page/LOGS/LOG.TXT"
}

# Makes the Windows component and the page host ready, with a copy of the example site.
stage_site() {
  build win64 QUENDAL_CLASSIC_ASP asp_host
  wine_start 64 || { say "Wine does not come up"; return 1; }
  site=$(wine_folder 64)/site
  rm -rf "$site"
  wine_stage 64 "$root/build/win64/QUENDAL_CLASSIC_ASP.DLL" \
    "$root/build/win64/tools/asp_host/asp_host.exe" "$root/examples/site"
  wine_run 64 regsvr32 /s "$(wine_path 64)\\QUENDAL_CLASSIC_ASP.DLL" ||
    { say "the component cannot be registered (regsvr32: $?)"; return 1; }
}

demo_windows() {
  trap 'wine_stop 64' EXIT
  stage_site
  echo "--- the page host runs examples/site/default.asp"
  wine_run 64 asp_host.exe run "$(wine_path 64)\\site\\default.asp" --headers \
    --query "report=7&lang=en" --server-variable "HTTP_USER_AGENT=Mozilla/5.0 (demo)" ||
    { say "the page failed (asp_host: $?)"; return 1; }
  show_log "$site/LOGS/LOG.TXT"
}

demo_serve() {
  need_windows
  trap 'wine_stop 64' EXIT
  trap exit INT TERM
  stage_site
  port=${1:-8080} host_start 64 "$(wine_path 64)\\site" "$root/build/win64/demo"
  say "The site is at http://127.0.0.1:$host_port/ and its log in $site/LOGS; Ctrl+C ends it."
  tail -n +1 --pid=$$ -f "$root/build/win64/demo.errors" &  # tells which pages fail
  wait %1
}

case ${1:-windows} in
  native) demo_native ;;
  serve) demo_serve "${2:-}" ;;
  windows)
    if need_windows; then
      demo_windows
    else
      say "This machine cannot have the Windows tools; a C++ host runs the page instead."
      demo_native
    fi ;;
  *) say "usage: $0 [native|serve [PORT]]"; exit 2 ;;
esac
