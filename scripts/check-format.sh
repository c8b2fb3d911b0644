#!/usr/bin/env bash
# Fails when a C/C++ file of the tree differs from what clang-format makes of
# it with the project's .clang-format; `scripts/check-format.sh --fix`
# rewrites those files in place (that is what `make format` runs).
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
fmt=${CLANG_FORMAT:-clang-format}
mapfile -d '' files < <(find . \( -path ./build -o -path './build-*' -o -path ./.git \) -prune -o \
  -type f \( -name '*.cpp' -o -name '*.cc' -o -name '*.c' -o -name '*.h' -o -name '*.hpp' \) \
  -print0 | sort -z)
if [ "${1:-}" = --fix ]; then
  exec "$fmt" -i --style=file "${files[@]}"
fi
bad=$("$fmt" --dry-run --Werror --style=file "${files[@]}" 2>&1 |
  sed -n 's/^\(\.\/[^:]*\):[0-9]*:[0-9]*: error: .*/\1/p' | sort -u)
if [ -n "$bad" ]; then
  echo "These files differ from the project's .clang-format:"
  echo "$bad" | sed 's/^\.\//  /'
  echo "Fix them with: make format   (clang-format -i --style=file on each)"
  exit 1
fi
echo "${#files[@]} C/C++ files match .clang-format"
