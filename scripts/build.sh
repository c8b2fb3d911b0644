#!/usr/bin/env bash
# Configures and builds the four trees under $BUILD: the i686 product, the
# x86_64 test build, the native build of the portable pieces, and the same
# pieces under libFuzzer (clang). Arguments name fewer trees: the tests of
# one manager need only `scripts/build.sh x86_64 native`.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
BUILD=${BUILD:-$root/build}
JOBS=${JOBS:-$(nproc)}

configure() {
  local dir=$1; shift
  if [ ! -f "$BUILD/$dir/build.ninja" ]; then
    cmake -S "$root" -B "$BUILD/$dir" -G Ninja -DCMAKE_BUILD_TYPE=Release "$@" >/dev/null
  fi
}

trees=${*:-i686 x86_64 native fuzz}
for dir in $trees; do
  case $dir in
    i686) configure i686 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-i686-w64-mingw32.cmake" \
      -DKWE_BUILD_TESTS=OFF ;;
    x86_64) configure x86_64 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-x86_64-w64-mingw32.cmake" \
      -DCMAKE_CROSSCOMPILING_EMULATOR="$root/scripts/wine-run.sh" ;;
    native) configure native -DKWE_I686_DLL="$BUILD/i686/bin/KWEJMP.dll" -DKWE_SANITIZE=ON ;;
    fuzz) CC=clang CXX=clang++ configure fuzz -DKWE_FUZZ=ON -DKWE_BUILD_TESTS=OFF ;;
    *) echo "no such build tree: $dir (i686, x86_64, native, fuzz)" >&2; exit 2 ;;
  esac
done

for dir in $trees; do
  echo "== building $dir"
  cmake --build "$BUILD/$dir" -j "$JOBS" -- --quiet
done
