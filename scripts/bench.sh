#!/usr/bin/env bash
# Prints the benchmark rows: name, ours, peer, ours / peer; both sides measured in the same run.
# Times are in microseconds of one unit of work, unless a row says otherwise. Documents to decode
# are taken from the folder that QUENDAL_BENCH_DATA names, or made up. scripts/bench.sh [NAME...]
. "$(dirname "$0")/lib.sh"

need_native
need rapidjson-dev nlohmann-json3-dev libssl-dev || say "some peers are missing"
build native benchmarks -- -DQUENDAL_BENCHMARKS=ON
[ -n "${QUENDAL_BENCH_DATA:-}" ] || [ ! -d "$root/../shared/data" ] ||
  export QUENDAL_BENCH_DATA=$root/../shared/data

printf '%-44s %14s %14s %8s\n' name ours peer ratio
for program in "$root"/build/native/bench/*_bench; do
  name=$(basename "$program" _bench)
  [ $# -eq 0 ] || [[ " $* " == *" $name "* ]] || continue
  "$program"
done

# The same from a page, in the script host where it can be had.
page_rows() {
  need_windows && build win64 QUENDAL_CLASSIC_ASP && wine_start 64 || return 0
  local folder; folder=$(wine_path 64)
  wine_stage 64 "$root/build/win64/QUENDAL_CLASSIC_ASP.DLL" "$root/bench/round_trip.vbs"
  wine_run 64 regsvr32 /s "$folder\\QUENDAL_CLASSIC_ASP.DLL"
  wine_run 64 cscript //nologo "$folder\\round_trip.vbs" |
    awk -F'|' '{ printf "%-44s %14.3f %14.3f %8.3f\n", $1, $2, $3, $2 / $3 }'
  wine_run 64 regsvr32 /s /u "$folder\\QUENDAL_CLASSIC_ASP.DLL"
  wine_stop 64
}
if [ $# -eq 0 ] || [[ " $* " == *" page "* ]]; then page_rows; fi
