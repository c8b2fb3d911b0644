// The PLstr... family and the Pascal/C string converters. Every call copes
// with source and destination being the same string (memmove), since ported
// code passes the same Str255 on both sides more often than one would hope.
#include <cstring>

#include "KWEStrings.h"

namespace {

constexpr size_t kMaxLength = 255;

inline size_t LengthOf(ConstStr255Param s) { return s ? s[0] : 0; }

inline size_t Smaller(size_t a, size_t b) { return a < b ? a : b; }

inline size_t CountOrZero(SInt16 n) { return n > 0 ? static_cast<size_t>(n) : 0; }

inline Ptr AddressIn(ConstStr255Param s, size_t index) {
  return reinterpret_cast<Ptr>(const_cast<unsigned char*>(s) + 1 + index);
}

// The first difference of the first count characters, or 0.
SInt16 FirstDifference(ConstStr255Param a, ConstStr255Param b, size_t count) {
  for (size_t i = 1; i <= count; ++i)
    if (a[i] != b[i]) return static_cast<SInt16>(int(a[i]) - int(b[i]));
  return 0;
}

// Appends up to count characters of src, stopping at 255.
StringPtr Append(StringPtr dst, ConstStr255Param src, size_t count) {
  if (!dst) return dst;
  size_t have = dst[0];
  size_t add = Smaller(Smaller(count, LengthOf(src)), kMaxLength - have);
  if (add) std::memmove(dst + 1 + have, src + 1, add);
  dst[0] = static_cast<unsigned char>(have + add);
  return dst;
}

// Length up to the first NUL, as the string would read converted to C.
size_t TextLength(ConstStr255Param s) {
  size_t n = LengthOf(s);
  const void* nul = n ? std::memchr(s + 1, 0, n) : nullptr;
  return nul ? static_cast<size_t>(static_cast<const unsigned char*>(nul) - (s + 1)) : n;
}

// Index of the first occurrence of needle in haystack (both read as C
// strings), or -1. An empty needle is found at 0, as strstr finds it.
long FindText(ConstStr255Param haystack, ConstStr255Param needle) {
  size_t h = TextLength(haystack), n = TextLength(needle);
  if (n > h) return -1;
  for (size_t at = 0; at + n <= h; ++at)
    if (n == 0 || std::memcmp(haystack + 1 + at, needle + 1, n) == 0) return static_cast<long>(at);
  return -1;
}

bool InSet(unsigned char c, ConstStr255Param set) {
  size_t n = LengthOf(set);
  return n && std::memchr(set + 1, c, n) != nullptr;
}

}  // namespace

KWE_API SInt16 KWE_CALL PLstrcmp(ConstStr255Param str1, ConstStr255Param str2) {
  size_t a = LengthOf(str1), b = LengthOf(str2);
  if (SInt16 d = FirstDifference(str1, str2, Smaller(a, b))) return d;
  return a > b ? 1 : (a < b ? -1 : 0);
}

KWE_API SInt16 KWE_CALL PLstrncmp(ConstStr255Param str1, ConstStr255Param str2, SInt16 num) {
  size_t count = Smaller(Smaller(LengthOf(str1), LengthOf(str2)), CountOrZero(num));
  return FirstDifference(str1, str2, count);
}

KWE_API StringPtr KWE_CALL PLstrcpy(StringPtr str1, ConstStr255Param str2) {
  if (!str1) return str1;
  size_t n = LengthOf(str2);
  if (n) std::memmove(str1 + 1, str2 + 1, n);
  str1[0] = static_cast<unsigned char>(n);
  return str1;
}

KWE_API StringPtr KWE_CALL PLstrncpy(StringPtr str1, ConstStr255Param str2, SInt16 num) {
  if (!str1) return str1;
  size_t n = Smaller(LengthOf(str2), CountOrZero(num));
  if (n) std::memmove(str1 + 1, str2 + 1, n);
  str1[0] = static_cast<unsigned char>(n);
  return str1;
}

KWE_API StringPtr KWE_CALL PLstrcat(StringPtr str1, ConstStr255Param str2) {
  return Append(str1, str2, kMaxLength);
}

KWE_API StringPtr KWE_CALL PLstrncat(StringPtr str1, ConstStr255Param str2, SInt16 num) {
  return Append(str1, str2, CountOrZero(num));
}

KWE_API Ptr KWE_CALL PLstrchr(ConstStr255Param str1, SInt16 ch1) {
  size_t n = LengthOf(str1);
  unsigned char c = static_cast<unsigned char>(ch1);
  for (size_t i = 0; i < n; ++i)
    if (str1[1 + i] == c) return AddressIn(str1, i);
  return nullptr;
}

KWE_API Ptr KWE_CALL PLstrrchr(ConstStr255Param str1, SInt16 ch1) {
  unsigned char c = static_cast<unsigned char>(ch1);
  for (size_t i = LengthOf(str1); i > 0; --i)
    if (str1[i] == c) return AddressIn(str1, i - 1);
  return nullptr;
}

KWE_API Ptr KWE_CALL PLstrpbrk(ConstStr255Param str1, ConstStr255Param str2) {
  size_t n = LengthOf(str1);
  for (size_t i = 0; i < n; ++i)
    if (InSet(str1[1 + i], str2)) return AddressIn(str1, i);
  return nullptr;
}

KWE_API SInt16 KWE_CALL PLstrspn(ConstStr255Param str1, ConstStr255Param str2) {
  size_t n = LengthOf(str1), i = 0;
  while (i < n && InSet(str1[1 + i], str2)) ++i;
  return static_cast<SInt16>(i);
}

KWE_API Ptr KWE_CALL PLstrstr(ConstStr255Param str1, ConstStr255Param str2) {
  if (!str1 || !str2) return nullptr;
  long at = FindText(str1, str2);
  return at < 0 ? nullptr : AddressIn(str1, static_cast<size_t>(at));
}

KWE_API SInt16 KWE_CALL PLpos(ConstStr255Param str1, ConstStr255Param str2) {
  if (!str1 || !str2) return 0;
  long at = FindText(str1, str2);
  return static_cast<SInt16>(at + 1);
}

KWE_API SInt16 KWE_CALL PLstrlen(ConstStr255Param str) {
  return static_cast<SInt16>(LengthOf(str));
}

KWE_API void KWE_CALL KWE_CopyPtoC(ConstStr255Param src, char* dst) {
  if (!dst) return;
  size_t n = LengthOf(src);
  if (n) std::memmove(dst, src + 1, n);
  dst[n] = 0;
}

KWE_API void KWE_CALL KWE_CopyCtoP(const char* src, StringPtr dst) {
  if (!dst) return;
  size_t n = 0;  // lstrlenA (0 for null), cut to what fits
  while (src && n < kMaxLength && src[n]) ++n;
  if (n) std::memmove(dst + 1, src, n);
  dst[0] = static_cast<unsigned char>(n);
}

KWE_API void KWE_CALL KWE_CopyPtoP(ConstStr255Param src, StringPtr dst) { PLstrcpy(dst, src); }
