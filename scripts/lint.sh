#!/usr/bin/env bash
# Checks the sources without running them: scripts/lint.sh [format|cppcheck|headers|tidy|clang ...]
#   format    the layout that .clang-format gives
#   cppcheck  its warnings, on both homes' sources
#   headers   each header compiles by itself, in both homes
#   tidy      clang-tidy with the checks of .clang-tidy, on what Linux compiles
#   clang     the library compiles with clang++ without a warning (with g++, every build checks that)
# Prints findings alone, and fails when there are any.
. "$(dirname "$0")/lib.sh"
export QUENDAL_WARNINGS=errors

lint_format() {
  need clang-format
  (cd "$root" && git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror)
}

# What it is silenced for: the automation types, whose unions it takes for forgotten members; lambdas
# in initializers, which it cannot parse; objects made in place, which it takes for uninitialized;
# shifts of negative numbers, which the language defines; what a constant would throw, which the
# compiler refuses; functions that name the exception in flight; `Ref`, which members take by value; specialisations, which it
# takes for derived classes of each other.
lint_cppcheck() {
  need cppcheck
  (cd "$root" && cppcheck --enable=warning,performance,portability --std=c++20 --quiet -j "$(nproc)" \
    --error-exitcode=1 --inline-suppr --suppress=missingIncludeSystem \
    --suppress=uninitDerivedMemberVar --suppress=uninitMemberVar --suppress=syntaxError \
    --suppress=legacyUninitvar --suppress=shiftNegativeLHS --suppress=throwInNoexceptFunction \
    --suppress=operatorEqVarError --suppress=rethrowNoCurrentException --suppress=passedByValue \
    --suppress=duplInheritedMember --suppress=CastIntegerToAddressAtReturn \
    -Iinclude -Isrc -Isrc/automation/posix/include \
    --template='{file}:{line}: {severity} {id}: {message}' src)
}

lint_headers() {
  need_native && need_windows
  build asan header_check && build win64 header_check
}

lint_tidy() {
  need clang clang-tidy
  build clang describe
  (cd "$root" && run-clang-tidy -quiet -p build/clang -j "$(nproc)" "$root/(src|tools|examples)/" \
    2>/dev/null >build/tidy.log) || { grep -A3 'error:' "$root/build/tidy.log" >&2; return 1; }
}

lint_clang() {
  need clang
  build clang all
}

[ $# -gt 0 ] || set -- format cppcheck headers tidy clang
status=0
for what; do
  "lint_$what" || { say "lint: $what found something"; status=1; }
done
exit $status
