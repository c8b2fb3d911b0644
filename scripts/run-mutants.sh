#!/usr/bin/env bash
# Runs the mutation check (scripts/mutants.py) inside one Xvfb and one
# wineserver, as the test run does.
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
BUILD=${BUILD:-$root/build}
export BUILD
. "$root/scripts/wine-session.sh"
"$root/scripts/build.sh" x86_64 native || exit 1
kwe_wine_start
python3 "$root/scripts/mutants.py"
status=$?
kwe_wine_stop
trap - EXIT
exit $status
