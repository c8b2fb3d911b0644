#pragma once

namespace kwe {

// EqualString's comparison: lengths first, then bytes, folded to upper case
// by the C runtime's mapping unless caseSensitive. Diacriticals always count.
bool EqualPascalStrings(const unsigned char* a, const unsigned char* b, bool caseSensitive);

}  // namespace kwe
