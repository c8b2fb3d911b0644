// Bit strings in memory and bit operations on 32-bit values.
#include "memory/bit_routines.h"

#include "ToolUtils.h"

namespace kwe::utilities {
namespace {

// The 68K computed the byte offset in a 16-bit register: it wraps at 64 KB.
inline UInt8* BitByte(const void* bytes, SInt32 bitNumber) {
  uint32_t offset = static_cast<uint32_t>(bitNumber >> 3) & 0xFFFF;
  return const_cast<UInt8*>(static_cast<const UInt8*>(bytes)) + offset;
}

inline UInt8 BitMask(SInt32 bitNumber) { return static_cast<UInt8>(0x80 >> (bitNumber & 7)); }

}  // namespace
}  // namespace kwe::utilities

using namespace kwe::utilities;

KWE_API Boolean KWE_CALL BitTst(const void* bytePtr, SInt32 bitNum) {
  return (*BitByte(bytePtr, bitNum) & BitMask(bitNum)) ? 1 : 0;
}

KWE_API void KWE_CALL BitSet(void* bytePtr, SInt32 bitNum) {
  *BitByte(bytePtr, bitNum) |= BitMask(bitNum);
}

KWE_API void KWE_CALL BitClr(void* bytePtr, SInt32 bitNum) {
  *BitByte(bytePtr, bitNum) &= static_cast<UInt8>(~BitMask(bitNum));
}

KWE_API SInt32 KWE_CALL BitAnd(SInt32 value1, SInt32 value2) { return value1 & value2; }
KWE_API SInt32 KWE_CALL BitOr(SInt32 value1, SInt32 value2) { return value1 | value2; }
KWE_API SInt32 KWE_CALL BitXor(SInt32 value1, SInt32 value2) { return value1 ^ value2; }

KWE_API SInt32 KWE_CALL BitShift(SInt32 value, SInt16 count) {
  if (count > 0) return static_cast<SInt32>(static_cast<uint32_t>(value) << (count & 31));
  if (count < 0) return value >> ((-count) & 31);  // sign-propagating
  return value;
}

KWE_API SInt16 KWE_CALL HiWord(SInt32 x) {
  return static_cast<SInt16>(static_cast<uint16_t>(static_cast<uint32_t>(x) >> 16));
}

KWE_API SInt16 KWE_CALL LoWord(SInt32 x) {
  return static_cast<SInt16>(static_cast<uint16_t>(static_cast<uint32_t>(x)));
}

KWE_API SInt32 KWE_CALL DeltaPoint(Point ptA, Point ptB) {
  uint32_t dv = static_cast<uint16_t>(ptA.v - ptB.v);
  uint32_t dh = static_cast<uint16_t>(ptA.h - ptB.h);
  return static_cast<SInt32>((dv << 16) | dh);
}
