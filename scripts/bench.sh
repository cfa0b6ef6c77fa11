#!/usr/bin/env bash
# Prints the benchmark rows: name, ours, peer, ours / peer. Both sides are measured in the same run;
# the peer is what stands in parentheses. Times are in microseconds of one unit of work, unless a row
# says otherwise. Documents to decode are taken from the folder that QUENDAL_BENCH_DATA names, or
# made up.
#   scripts/bench.sh [linux|windows|page]...   these homes, or all
#   only='json log' scripts/bench.sh ...       these programs alone (bench/*_bench.cpp)
. "$(dirname "$0")/lib.sh"

heading() { printf '\n%-54s %14s %14s %8s\n' "$1" ours peer ratio; }

# each_program SUFFIX COMMAND...: runs the programs in $folder.
each_program() {
  local suffix=$1 program name; shift
  for program in "$folder"/*_bench"$suffix"; do
    [ -e "$program" ] || continue
    name=$(basename "$program" "_bench$suffix")
    [[ -n ${only:-} && " $only " != *" $name "* ]] || "$@" "$program"
  done
}

bench_linux() {
  need_native
  need rapidjson-dev nlohmann-json3-dev libssl-dev || say "some peers are missing"
  build native benchmarks -- -DQUENDAL_BENCHMARKS=ON
  local folder=$root/build/native/bench
  heading 'Linux'
  each_program '' env
}

# The emulation's programs ask its server, and it answers by chance up to ten times as slowly on
# another processor.
on_one_processor() { taskset -cp 0 "$BASHPID" >/dev/null; }

bench_windows() {
  on_one_processor
  need_windows || { say "Windows is left out"; return 0; }
  need rapidjson-dev nlohmann-json3-dev || say "some peers are missing"
  build win64 benchmarks -- -DQUENDAL_BENCHMARKS=ON
  wine_start 64
  local folder=$root/build/win64/bench
  heading 'Windows x64, under Wine'
  each_program .exe wine_run 64
  wine_stop 64
}

# What pages ask, of the DLL that is registered.
bench_page() {
  on_one_processor
  need_windows || { say "pages are left out"; return 0; }
  build win64 QUENDAL_CLASSIC_ASP
  wine_start 64
  local folder page; folder=$(wine_path 64)
  wine_stage 64 "$root/build/win64/QUENDAL_CLASSIC_ASP.DLL" "$root"/bench/page.{vbs,js}
  wine_run 64 regsvr32 /s "$folder\\QUENDAL_CLASSIC_ASP.DLL"
  heading 'A page, in the script host under Wine'
  for page in page.vbs page.js; do
    wine_run 64 cscript //nologo "$folder\\$page" "$folder\\page_rows" |
      awk -F'|' '{ printf "%-54s %14.3f %14.3f %8.3f\n", $1, $2, $3, $2 / $3 }'
  done
  wine_run 64 regsvr32 /s /u "$folder\\QUENDAL_CLASSIC_ASP.DLL"
  wine_stop 64
}

[ $# -gt 0 ] || set -- linux windows page
for home in "$@"; do
  case $home in
    linux | windows | page) ("bench_$home") ;;
    *) say "usage: [only='NAME...'] $0 [linux|windows|page]..."; exit 2 ;;
  esac
done
