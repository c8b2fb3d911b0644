#!/usr/bin/env bash
# Installs what the build and the tests need on a Debian 12 machine, and
# nothing when everything is already there.
set -u

need=()
have_cmd() { command -v "$1" >/dev/null 2>&1; }
have_file() { [ -e "$1" ]; }

have_cmd cmake || need+=(cmake)
have_cmd ninja || need+=(ninja-build)
have_cmd make || need+=(make)
have_cmd g++ || need+=(g++)
have_cmd clang++ || need+=(clang)
have_cmd clang-format || need+=(clang-format)
compgen -G "/usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-x86_64.a" >/dev/null ||
  need+=(libclang-rt-14-dev)
have_cmd python3 || need+=(python3)
have_cmd i686-w64-mingw32-g++-win32 || need+=(g++-mingw-w64-i686)
have_cmd x86_64-w64-mingw32-g++-posix || need+=(g++-mingw-w64-x86-64)
have_file /usr/lib/wine/wine64 || need+=(wine64)
have_cmd Xvfb || need+=(xvfb)
have_file /usr/src/googletest/CMakeLists.txt || need+=(googletest)
have_file /usr/share/fonts/truetype/liberation || need+=(fonts-liberation)
have_file /usr/share/wine/fonts/coure.fon || need+=(fonts-wine)

if [ ${#need[@]} -eq 0 ]; then
  exit 0
fi

SUDO=""
if [ "$(id -u)" != 0 ]; then SUDO=sudo; fi
echo "Installing: ${need[*]}"
# One stale index must not stop the install: carry on whatever update says.
$SUDO apt-get update -q >/dev/null 2>&1 || echo "apt-get update reported a problem; going on"
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -q --no-install-recommends "${need[@]}" >/dev/null
