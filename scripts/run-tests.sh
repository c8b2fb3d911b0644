#!/usr/bin/env bash
# Runs every test of the build trees in one CTest run, under one Xvfb and one
# wineserver. CTest's summary is the last thing printed.
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
BUILD=${BUILD:-$root/build}
. "$root/scripts/wine-session.sh"

# One CTest file over the build trees, so one summary covers them all. The
# fuzz tree is there when scripts/build.sh has made it.
cat >"$BUILD/CTestTestfile.cmake" <<CTEST
subdirs("native")
subdirs("i686")
subdirs("x86_64")
CTEST
if [ -f "$BUILD/fuzz/CTestTestfile.cmake" ]; then
  echo 'subdirs("fuzz")' >>"$BUILD/CTestTestfile.cmake"
fi

kwe_wine_start
echo "== running tests (display $DISPLAY)"
# CTEST_ARGS may carry quoted arguments (-R 'A|B'), hence eval.
eval "ctest --test-dir \"\$BUILD\" -j \"\${JOBS:-2}\" --output-on-failure --timeout 120 ${CTEST_ARGS:-}" >"$BUILD/ctest.log" 2>&1
status=$?
kwe_wine_stop
trap - EXIT
# Failures in full, then the closing lines ending with CTest's summary.
grep -v -E '^ *([0-9]+/[0-9]+ Test +#[0-9]+: .* Passed|Start +[0-9]+:)' "$BUILD/ctest.log" | grep -v '^$' | tail -n 200
exit $status
