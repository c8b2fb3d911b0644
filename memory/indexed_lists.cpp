// Element look-up in 'STR#' and 'PAT#' lists.
#include "memory/indexed_lists.h"

#include <cstring>

namespace kwe::utilities {
namespace {

constexpr size_t kCountBytes = 2;
constexpr size_t kPatternBytes = 8;

SInt16 ListCount(const unsigned char* list, size_t size) {
  if (!list || size < kCountBytes) return 0;
  SInt16 count;
  std::memcpy(&count, list, sizeof count);
  return count;
}

}  // namespace

bool CopyIndexedString(const unsigned char* list, size_t size, SInt16 index, unsigned char* dst) {
  if (index < 1 || index > ListCount(list, size)) return false;
  size_t at = kCountBytes;
  for (SInt16 skip = 1; skip < index; ++skip) {
    if (at >= size) return false;
    at += 1 + list[at];
  }
  if (at >= size || at + 1 + list[at] > size) return false;
  std::memcpy(dst, list + at, 1 + list[at]);
  return true;
}

PatternLookup CopyIndexedPattern(const unsigned char* list, size_t size, SInt16 index,
                                 Pattern* pattern) {
  if (index < 1) return PatternLookup::kBeforeFirst;
  size_t at = kCountBytes + (static_cast<size_t>(index) - 1) * kPatternBytes;
  if (index > ListCount(list, size) || at + kPatternBytes > size) return PatternLookup::kBeyondLast;
  std::memcpy(pattern->pat, list + at, kPatternBytes);
  return PatternLookup::kFound;
}

}  // namespace kwe::utilities
