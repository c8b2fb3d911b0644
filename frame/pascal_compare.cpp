#include "frame/pascal_compare.h"

#include <cctype>

#include "OSUtils.h"

namespace kwe {

bool EqualPascalStrings(const unsigned char* a, const unsigned char* b, bool caseSensitive) {
  if (!a || !b) return a == b;
  if (a[0] != b[0]) return false;
  for (int i = 1; i <= a[0]; ++i) {
    unsigned char x = a[i], y = b[i];
    if (!caseSensitive) {
      x = static_cast<unsigned char>(std::toupper(x));
      y = static_cast<unsigned char>(std::toupper(y));
    }
    if (x != y) return false;
  }
  return true;
}

}  // namespace kwe

KWE_API Boolean KWE_CALL EqualString(ConstStr255Param str1, ConstStr255Param str2, Boolean caseSens,
                                     Boolean) {
  return kwe::EqualPascalStrings(str1, str2, caseSens != 0) ? 1 : 0;
}
