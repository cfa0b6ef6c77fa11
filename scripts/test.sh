#!/usr/bin/env bash
# Runs the tests: scripts/test.sh [lint|native|win64|win32|deep|site|packages|all|full]. Without one:
# native and win64.
#   lint      the layout of the sources, cppcheck, and each header by itself
#   native    Linux, with AddressSanitizer and UndefinedBehaviorSanitizer
#   win64     the x64 component and its tests under Wine, pages in its script hosts
#   win32     the same for x86
#   deep      clang, clang-tidy, and each fuzz target for a few seconds
#   site      the example site in a browser
#   packages  what scripts/package.sh makes, as a user installs, uses and removes it
#   all       lint, native, win64 and win32: what CI runs
#   full      everything, before a release
# Ends with "N passed, N failed[, N skipped]". A home whose tools cannot be had on this machine is
# named and counted as skipped.
. "$(dirname "$0")/lib.sh"
. "$root/scripts/packages_test.sh"
export TZ=IST-5:30  # where local time is not universal time

passed=0 failed=0 skipped=0

# count_gtest LOG STATUS: adds up what a test program reported; a crash counts as a failure.
count_gtest() {
  local log=$1 status=$2 ok bad skip
  ok=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$log" | tail -n 1)
  bad=$(grep -c '^\[  FAILED  \] .* ms)$' "$log" || true)
  skip=$(sed -n 's/^\[  SKIPPED \] \([0-9]*\) test.*/\1/p' "$log" | tail -n 1)
  [ "$status" = 0 ] || [ "$bad" != 0 ] || bad=1
  passed=$((passed + ${ok:-0})) failed=$((failed + bad)) skipped=$((skipped + ${skip:-0}))
  [ "${ok:-0}$bad" != 00 ] || { say "the test program ran no test"; failed=$((failed + 1)); }
}

check() {  # check NAME COMMAND...: one test more
  local name=$1; shift
  if "$@"; then passed=$((passed + 1)); else say "FAILED: $name"; failed=$((failed + 1)); fi
}

run_lint() {
  local what
  say "== lint"
  for what in format cppcheck headers; do check "lint $what" "$root/scripts/lint.sh" "$what"; done
}

run_deep() {
  local what
  say "== deep"
  for what in clang tidy; do check "lint $what" "$root/scripts/lint.sh" "$what"; done
  check "fuzz targets" "$root/scripts/fuzz.sh" 5
}

run_native() {
  say "== native"
  need_native && need libgtest-dev locales || { skip_home native; return; }
  build asan quendal_tests short_memory describe || { failed=$((failed + 1)); return; }
  local log=$root/build/asan/tests.log status=0
  "$root/build/asan/tests/quendal_tests" --gtest_brief=1 2>&1 | tr -d '\r' | tee "$log" || status=$?
  count_gtest "$log" "$status"
  check "every member when memory is short" memory_is_short
  check "the interface definition is what the tables tell (tools/describe idl)" \
    diff -u "$root/src/component/QUENDAL_REPORTS_ASP.idl" <("$root/build/asan/describe" idl)
  check "the reference is what the tables tell (tools/describe reference)" \
    diff -u "$root/docs/reference.md" <("$root/build/asan/describe" reference "$root/docs/reference")
}

memory_is_short() {  # says nothing unless it fails
  local log=$root/build/asan/short_memory.log
  "$root/build/asan/fuzz/short_memory" quick >"$log" 2>&1 || { tail -n 60 "$log" >&2; return 1; }
}

page() {  # page BITS PAGE: runs a page in the script host, which ends well, and compares its output
  local bits=$1 page=$2 name folder actual
  name=$(basename "$page")
  folder=$(wine_path "$bits")\\$(basename "$(dirname "$page")")
  actual=$root/build/win$bits/$name.actual
  wine_run "$bits" cscript //nologo "$folder\\$name" "$folder" >"$actual" || return 1
  diff -u "$page.expected" "$actual" >&2
}

# host_page BITS PAGE: runs a page in the page host, with the arguments beside it, and compares what
# it prints, errors included, and its exit status.
host_page() {
  local bits=$1 page=$2 name pages actual output status=0 arguments=()
  name=$(basename "$page") pages="$(wine_path "$1")\\host\\pages"
  actual=$root/build/win$bits/$name.actual
  [ ! -f "$page.arguments" ] || mapfile -t arguments <"$page.arguments"
  output=$(wine_run "$bits" asp_host.exe run "$pages\\$name" "${arguments[@]}") || status=$?
  output=${output//"$pages"/\~}
  # The keys of sessions are random, and the times of cookies depend on the time zone.
  { sed -e 's/ASPSESSIONID=[A-Z]*/ASPSESSIONID=KEY/' \
        -e 's/[A-Z][a-z][a-z], 1[456] Nov 2026 [0-9][0-9]:[0-9]0:00 GMT/TIME/' <<<"$output"
    echo "exit status $status"
  } >"$actual"
  diff -u "$page.expected" "$actual" >&2
}

# host_serves BITS: asks a page host that serves the test site over HTTP.
host_serves() {
  local bits=$1 out=$root/build/win$1 log=$root/build/win$1/serve.log status=0 address
  host_start "$bits" "$(wine_path "$bits")\\host\\site" "$out/host" --script-timeout 60 ||
    { failed=$((failed + 1)); return; }
  timeout 300 "$root/build/asan/tests/host/serve/host_serve_tests" --gtest_brief=1 \
    "$host_port" "$(wine_folder "$bits")/host/site" "$out/host.errors" >"$log" 2>&1 || status=$?
  cat "$log"
  count_gtest "$log" "$status"
  check "the page host still runs" host_stop "$bits"
}

# windows_up BITS NAME: a Windows that cannot be had is skipped, one that does not come up has failed.
windows_up() {
  local status=0
  wine_start "$1" || status=$?
  [ "$status" != 1 ] || skip_home "$2"
  [ "$status" -lt 2 ] || { say "FAILED: $2 does not come up"; failed=$((failed + 1)); }
  return "$status"
}

run_windows() {
  local bits=$1 log status=0 page
  say "== win$bits"
  need_windows || { skip_home "win$bits"; return; }
  build "win$bits" QUENDAL_CLASSIC_ASP quendal_tests asp_host &&
    build asan describe host_serve_tests || { failed=$((failed + 1)); return; }
  windows_up "$bits" "win$bits" || return 0
  local out=$root/build/win$bits
  "$root/build/asan/describe" examples "$root/docs/reference" "$out/reference"
  wine_stage "$bits" "$out/QUENDAL_CLASSIC_ASP.DLL" "$out/tests/quendal_tests.exe" \
    "$out/tools/asp_host/asp_host.exe" "$root/tests/pages" "$root/tests/host" "$out/reference"
  log=$out/tests.log
  wine_run "$bits" quendal_tests.exe --gtest_brief=1 >"$log" || status=$?
  cat "$log"
  count_gtest "$log" "$status"

  check "regsvr32" wine_run "$bits" regsvr32 /s "$(wine_path "$bits")\\QUENDAL_CLASSIC_ASP.DLL"
  for page in "$root"/tests/pages/*.{vbs,js} "$out"/reference/*.vbs; do
    check "page $(basename "$page")" page "$bits" "$page"
  done
  for page in "$root"/tests/host/pages/*.asp; do
    check "page $(basename "$page") in the page host" host_page "$bits" "$page"
  done
  host_serves "$bits"
  check "regsvr32 /u" wine_run "$bits" regsvr32 /s /u "$(wine_path "$bits")\\QUENDAL_CLASSIC_ASP.DLL"
  wine_stop "$bits"
  [ "$bits" != 64 ] || check "the log in the README is that of a real run" "$root/scripts/readme.sh" --check
}

run_site() {
  say "== site"
  check "the example site in a browser" "$root/scripts/screenshots.sh" --check
}

skip_home() { say "SKIPPED: $1 (its tools cannot be had on this machine)"; skipped=$((skipped + 1)); }

trap 'wine_stop 64 2>/dev/null || true; wine32_stop 2>/dev/null || true' EXIT
case ${1:-default} in
  lint) run_lint ;;
  native) run_native ;;
  win64) run_windows 64 ;;
  win32) run_windows 32 ;;
  site) run_site ;;
  packages) run_packages ;;
  deep) run_deep ;;
  default) run_native; run_windows 64 ;;
  all | full)
    run_lint; run_native; run_windows 64; run_windows 32
    [ "$1" = all ] || { run_deep; run_site; run_packages; } ;;
  *) say "usage: $0 [lint|native|win64|win32|deep|site|packages|all|full]"; exit 2 ;;
esac

summary="$passed passed, $failed failed"
[ "$skipped" = 0 ] || summary+=", $skipped skipped"
echo "$summary"
[ "$failed" = 0 ] && [ "$passed" -gt 0 ]
