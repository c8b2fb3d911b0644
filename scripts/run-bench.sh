#!/usr/bin/env bash
# Runs every benchmark of the x86_64 build under Wine and prints its ratios.
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
BUILD=${BUILD:-$root/build}
. "$root/scripts/wine-session.sh"
kwe_wine_start
for bench in "$BUILD"/x86_64/bin/*_bench.exe; do
  [ -e "$bench" ] || continue
  echo "== $(basename "$bench" .exe)"
  "$WINE" "$bench" ${BENCH_ARGS:-}
done
