// The element converters a host uses on structures of its own: each
// reverses the bytes of one field in place, so the same call converts in
// both directions.
#include "KWEByteSwap.h"
#include "resources/byte_order.h"

using kwe::byteswap::ReverseBytes;
using kwe::byteswap::ReverseLong;
using kwe::byteswap::ReverseWord;

namespace {
inline uint8_t* Bytes(void* p) { return static_cast<uint8_t*>(p); }
inline const uint8_t* Bytes(const void* p) { return static_cast<const uint8_t*>(p); }
}  // namespace

KWE_API void KWE_CALL KWE_ByteSwapWORD(void* p) {
  if (p) ReverseWord(Bytes(p));
}

KWE_API void KWE_CALL KWE_ByteSwapLONG(void* p) {
  if (p) ReverseLong(Bytes(p));
}

KWE_API void KWE_CALL KWE_ByteSwapRect(void* p) {
  if (p) kwe::byteswap::ReverseFourWords(Bytes(p));
}

// The count is taken unsigned: a negative byteCount is a very long run.
KWE_API void KWE_CALL KWE_ByteSwapWORDS(void* p, SInt32 byteCount) {
  if (!p) return;
  uint32_t words = uint32_t(byteCount) / 2;
  for (uint32_t i = 0; i < words; ++i) ReverseWord(Bytes(p) + 2 * size_t(i));
}

KWE_API void KWE_CALL KWE_ByteSwapLONGS(void* p, SInt32 byteCount) {
  if (!p) return;
  uint32_t longs = uint32_t(byteCount) / 4;
  for (uint32_t i = 0; i < longs; ++i) ReverseLong(Bytes(p) + 4 * size_t(i));
}

KWE_API void KWE_CALL KWE_ByteSwapFLOAT(void* p) {
  if (p) ReverseLong(Bytes(p));
}

// Unlike the WORDS and LONGS forms, the 16-bit count is signed: a negative
// one converts nothing.
KWE_API void KWE_CALL KWE_ByteSwapFLOATS(void* p, SInt16 byteCount) {
  if (!p) return;
  for (int i = 0; i < byteCount / 4; ++i) ReverseLong(Bytes(p) + 4 * i);
}

KWE_API void KWE_CALL KWE_ByteSwapDOUBLE(void* p) {
  if (p) ReverseBytes(Bytes(p), 8);
}

// The 96-bit format of the 68881 coprocessor.
KWE_API void KWE_CALL KWE_ByteSwap881(void* p) {
  if (p) ReverseBytes(Bytes(p), 12);
}

// SANE's 80-bit extended.
KWE_API void KWE_CALL KWE_ByteSwapEXTENDED(void* p) {
  if (p) ReverseBytes(Bytes(p), 10);
}

KWE_API UInt16 KWE_CALL KWE_GetByteSwapWORD(const void* p) {
  if (!p) return 0;
  return UInt16((Bytes(p)[0] << 8) | Bytes(p)[1]);
}

KWE_API UInt32 KWE_CALL KWE_GetByteSwapLONG(const void* p) {
  if (!p) return 0;
  const uint8_t* b = Bytes(p);
  return (UInt32(b[0]) << 24) | (UInt32(b[1]) << 16) | (UInt32(b[2]) << 8) | UInt32(b[3]);
}

// src may be dst: all four values are read before any is stored.
KWE_API void KWE_CALL KWE_GetByteSwapRect(const void* src, Rect* dst) {
  if (!src || !dst) return;
  SInt16 v[4];
  for (int i = 0; i < 4; ++i) v[i] = SInt16(KWE_GetByteSwapWORD(Bytes(src) + 2 * i));
  *dst = Rect{v[0], v[1], v[2], v[3]};
}
