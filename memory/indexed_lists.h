// Reading 'STR#' and 'PAT#' resource data: a 16-bit count (already in the
// processor's order, as the Resource Manager converts it on loading)
// followed by the elements. The data is trusted no further than its size.
#pragma once
#include <cstddef>

#include "MacTypes.h"

namespace kwe::utilities {

// Copies string `index` (from 1) into dst, a Str255. False, with dst not
// written, when the index is outside 1..count or the list ends early.
bool CopyIndexedString(const unsigned char* list, size_t size, SInt16 index, unsigned char* dst);

enum class PatternLookup { kFound, kBeforeFirst, kBeyondLast };

// Copies pattern `index` (from 1) into *pattern when it is there.
PatternLookup CopyIndexedPattern(const unsigned char* list, size_t size, SInt16 index,
                                 Pattern* pattern);

}  // namespace kwe::utilities
