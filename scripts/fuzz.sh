#!/usr/bin/env bash
# Runs every fuzz target for a number of seconds: scripts/fuzz.sh [SECONDS]. Fails on any finding,
# whose input is kept in build/fuzz/findings. Corpora grow in build/fuzz/corpus from run to run.
. "$(dirname "$0")/lib.sh"
seconds=${1:-60}

need_native && need clang libclang-rt-dev
build fuzz fuzzers
out=$root/build/fuzz
mkdir -p "$out/findings"

# Scratch files go to memory where that can be had.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm
TMPDIR=$(mktemp -d) && export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT

failed=0
for source in "$root"/fuzz/*_fuzz.cpp; do
  name=$(basename "$source" .cpp)
  corpus=$out/corpus/$name
  seeds=$root/fuzz/seeds/$name
  mkdir -p "$corpus"
  [ ! -d "$seeds" ] || cp -n "$seeds"/* "$corpus"
  if "$out/fuzz/$name" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=4096 -entropic=0 \
      -artifact_prefix="$out/findings/$name-" "$corpus" >"$out/$name.log" 2>&1; then
    echo "$name: clean, $(grep -o 'stat::number_of_executed_units: *[0-9]*\|Done [0-9]* runs' "$out/$name.log" | tail -n 1)"
    grep -E '^(calls|not reached): ' "$out/$name.log" | cut -c 1-400 | sed 's/^/  /' || true
  else
    tail -n 30 "$out/$name.log" >&2
    echo "$name: FAILED"
    failed=1
  fi
done
exit $failed
