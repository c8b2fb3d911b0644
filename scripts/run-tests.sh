#!/usr/bin/env bash
# Runs every test of the build trees in one CTest run, under one Xvfb and one
# wineserver. CTest's summary is the last thing printed.
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
BUILD=${BUILD:-$root/build}
. "$root/scripts/wine-session.sh"

# One CTest file over the build trees that are there (scripts/build.sh makes
# all four), so one summary covers them all.
: >"$BUILD/CTestTestfile.cmake"
for tree in native i686 x86_64 fuzz; do
  if [ -f "$BUILD/$tree/CTestTestfile.cmake" ]; then
    echo "subdirs(\"$tree\")" >>"$BUILD/CTestTestfile.cmake"
  fi
done

kwe_wine_start
echo "== running tests (display $DISPLAY)"
# CTEST_ARGS may carry quoted arguments (-R 'A|B'), hence eval.
# A Wine test process has been seen to finish its test (gtest has printed
# PASSED) and not end (kwe_wine_start keeps one cause away); a test that
# really hangs hangs again, so a timed-out test is run once more before it
# counts as failed. Tests that really take long (the fuzz targets, the
# editor's soak) set their own TIMEOUT; the rest finish in seconds, so a
# stuck exit costs one minute, not two.
eval "ctest --test-dir \"\$BUILD\" -j \"\${JOBS:-2}\" --output-on-failure --timeout 60 --repeat after-timeout:2 ${CTEST_ARGS:-}" >"$BUILD/ctest.log" 2>&1
status=$?
kwe_wine_stop
trap - EXIT
# Failures in full, then the closing lines ending with CTest's summary.
grep -v -E '^ *([0-9]+/[0-9]+ Test +#[0-9]+: .* Passed|Start +[0-9]+:)' "$BUILD/ctest.log" | grep -v '^$' | tail -n 200
exit $status
