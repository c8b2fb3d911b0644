#!/usr/bin/env bash
# Runs the demonstration host (x86_64 build) under Wine and Xvfb and saves its
# screenshot as $BUILD/demo-screenshot.png.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
BUILD=${BUILD:-$root/build}
. "$root/scripts/wine-session.sh"
kwe_wine_start
cd "$BUILD"
"$WINE" "$BUILD/x86_64/bin/demo_host.exe" demo-screenshot.png
echo "The 32-bit product is $BUILD/i686/bin/KWEJMP.dll (import library $BUILD/i686/lib/libKWEJMP.dll.a)."
