#!/usr/bin/env bash
# The test build's emulator: runs one Windows program under wine64. Now and
# then, under load, wine64 returns at once without having started the
# program: a failing status and not a byte printed. Such a start is made once
# more. A program that started and failed has printed something (GoogleTest
# prints its banner first), so it is never run twice.
wine=/usr/lib/wine/wine64
log=$(mktemp)
trap 'rm -f "$log"' EXIT
for attempt in 1 2; do
  "$wine" "$@" 2>&1 | tee "$log"
  status=${PIPESTATUS[0]}
  if [ "$status" -eq 0 ] || [ -s "$log" ]; then break; fi
  echo "wine-run: $1 returned $status and printed nothing (start $attempt of 2)" >&2
done
exit "$status"
