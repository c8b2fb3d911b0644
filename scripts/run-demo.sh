#!/usr/bin/env bash
# Runs the demonstration host (x86_64 build) under Wine and Xvfb and saves its
# screenshots as $BUILD/demo-*.png, then the document editor through its
# scripted tour, a screenshot after each step. The fresh Wine prefix first gets a
# PostScript printer that prints into $BUILD/demo-page.ps, where the demo's
# printed page lands.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
BUILD=${BUILD:-$root/build}
. "$root/scripts/wine-session.sh"
kwe_wine_start
cd "$BUILD"
rm -f demo-page.ps "Tour notes.txt"  # the save dialog would ask before replacing it
"$WINE" "$BUILD/x86_64/bin/demo_printer.exe" demo-page.ps
"$WINE" "$BUILD/x86_64/bin/demo_host.exe" demo-screenshot.png
# The document editor's tour, driven by the script of its test: each step's
# window as $BUILD/editor-NN-<step>.png.
rm -f editor-[0-9]*.png
KWE_EDITOR_SHOTS=. "$WINE" "$BUILD/x86_64/bin/editor_driven.exe" ||
  echo "The editor's tour reported a difference (above)."
echo "The editor's tour is in $BUILD/editor-*.png."
if [ -s demo-page.ps ]; then echo "The printed page is $BUILD/demo-page.ps."; fi
echo "The 32-bit product is $BUILD/i686/bin/KWEJMP.dll (import library $BUILD/i686/lib/libKWEJMP.dll.a)."
