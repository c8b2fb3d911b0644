#!/usr/bin/env bash
# Configures and builds the four trees under $BUILD: the i686 product, the
# x86_64 test build, the native build of the portable pieces, and the same
# pieces under libFuzzer (clang).
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

configure i686 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-i686-w64-mingw32.cmake" -DKWE_BUILD_TESTS=OFF
configure x86_64 -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-x86_64-w64-mingw32.cmake"
configure native -DKWE_I686_DLL="$BUILD/i686/bin/KWEJMP.dll" -DKWE_SANITIZE=ON
CC=clang CXX=clang++ configure fuzz -DKWE_FUZZ=ON -DKWE_BUILD_TESTS=OFF

for dir in i686 x86_64 native fuzz; do
  echo "== building $dir"
  cmake --build "$BUILD/$dir" -j "$JOBS" -- --quiet
done
