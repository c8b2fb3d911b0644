// PackBits and UnpackBits: the run-length coding of MacPaint documents,
// 'PICT' pixel data and icon families.
#include "memory/pack_bits.h"

#include <cstring>

#include "ToolUtils.h"

namespace kwe::packbits {
namespace {

constexpr size_t kLongestPiece = 127;  // for both kinds: 128 is never written

inline bool TripleAt(const uint8_t* src, size_t at, size_t count) {
  return count - at >= 3 && src[at] == src[at + 1] && src[at] == src[at + 2];
}

// Pieces are at most 129 bytes: fixed-size moves the compiler can inline
// beat a call into the C library for such short copies. The last, partial
// move overlaps the one before it instead of going byte by byte, and
// nothing outside [dst, dst + count) or [src, src + count) is touched.
inline void CopyShort(uint8_t* dst, const uint8_t* src, size_t count) {
  if (count >= 16) {
    size_t at = 0;
    for (; at + 16 <= count; at += 16) std::memcpy(dst + at, src + at, 16);
    if (at < count) std::memcpy(dst + count - 16, src + count - 16, 16);
  } else if (count >= 8) {
    std::memcpy(dst, src, 8);
    std::memcpy(dst + count - 8, src + count - 8, 8);
  } else if (count >= 4) {
    std::memcpy(dst, src, 4);
    std::memcpy(dst + count - 4, src + count - 4, 4);
  } else {
    for (size_t i = 0; i < count; ++i) dst[i] = src[i];
  }
}

inline void FillShort(uint8_t* dst, uint8_t value, size_t count) {
  uint8_t pattern[16];
  std::memset(pattern, value, sizeof pattern);
  if (count < 16) {
    CopyShort(dst, pattern, count);
    return;
  }
  size_t at = 0;
  for (; at + 16 <= count; at += 16) std::memcpy(dst + at, pattern, 16);
  if (at < count) std::memcpy(dst + count - 16, pattern, 16);
}

}  // namespace

size_t Pack(const uint8_t* src, size_t count, uint8_t* out) {
  uint8_t* o = out;
  size_t at = 0;
  while (at < count) {
    if (TripleAt(src, at, count)) {
      uint8_t value = src[at];
      size_t end = at + 3;
      while (end < count && src[end] == value) ++end;
      for (size_t run = end - at; run > 0;) {
        size_t piece = run < kLongestPiece ? run : kLongestPiece;
        *o++ = static_cast<uint8_t>(1 - static_cast<int>(piece));  // 1 byte: header 0, a literal
        *o++ = value;
        run -= piece;
      }
      at = end;
    } else {
      // A literal stretch runs until three equal bytes start; fewer than
      // three bytes at the end can never start a run, so they join it.
      size_t end = at + 1;
      while (end < count && !TripleAt(src, end, count)) ++end;
      while (at < end) {
        size_t piece = end - at < kLongestPiece ? end - at : kLongestPiece;
        *o++ = static_cast<uint8_t>(piece - 1);
        std::memcpy(o, src + at, piece);
        o += piece;
        at += piece;
      }
    }
  }
  return static_cast<size_t>(o - out);
}

UnpackProgress Unpack(const uint8_t* src, size_t srcSize, uint8_t* dst, size_t wanted) {
  size_t read = 0, written = 0;
  // While a whole piece (a header and up to 128 bytes; 129 bytes written)
  // fits both ways, no piece needs cutting.
  constexpr size_t kWholePiece = 129;
  while (wanted - written >= kWholePiece && srcSize - read >= kWholePiece) {
    int header = static_cast<int8_t>(src[read++]);
    if (header >= 0) {
      size_t n = static_cast<size_t>(header) + 1;
      CopyShort(dst + written, src + read, n);
      read += n;
      written += n;
    } else {
      size_t n = static_cast<size_t>(1 - header);  // -128 repeats 129 times
      FillShort(dst + written, src[read++], n);
      written += n;
    }
  }
  while (written < wanted && read < srcSize) {
    int header = static_cast<int8_t>(src[read++]);
    size_t left = wanted - written;
    if (header >= 0) {
      // The source advances only by the bytes actually copied.
      size_t n = static_cast<size_t>(header) + 1;
      if (n > left) n = left;
      if (n > srcSize - read) n = srcSize - read;
      CopyShort(dst + written, src + read, n);
      read += n;
      written += n;
    } else {
      if (read == srcSize) break;
      size_t n = static_cast<size_t>(1 - header);
      if (n > left) n = left;
      FillShort(dst + written, src[read++], n);
      written += n;
    }
  }
  return {read, written};
}

}  // namespace kwe::packbits

namespace {

// The exported calls trust the caller's source as the Toolbox did: only the
// destination count bounds the work.
constexpr size_t kUnboundedSource = static_cast<size_t>(-1) / 2;

void PackAndAdvance(Ptr* srcPtr, Ptr* dstPtr, SInt16 srcBytes) {
  if (!srcPtr || !dstPtr || srcBytes <= 0) return;
  auto* src = reinterpret_cast<const uint8_t*>(*srcPtr);
  auto* dst = reinterpret_cast<uint8_t*>(*dstPtr);
  size_t written = kwe::packbits::Pack(src, static_cast<size_t>(srcBytes), dst);
  *srcPtr += srcBytes;
  *dstPtr += written;
}

void UnpackAndAdvance(Ptr* srcPtr, Ptr* dstPtr, SInt16 dstBytes) {
  if (!srcPtr || !dstPtr || dstBytes <= 0) return;
  auto* src = reinterpret_cast<const uint8_t*>(*srcPtr);
  auto* dst = reinterpret_cast<uint8_t*>(*dstPtr);
  kwe::packbits::UnpackProgress done =
      kwe::packbits::Unpack(src, kUnboundedSource, dst, static_cast<size_t>(dstBytes));
  *srcPtr += done.read;
  *dstPtr += done.written;
}

}  // namespace

KWE_API void KWE_CALL PackBits(Ptr* srcPtr, Ptr* dstPtr, SInt16 srcBytes) {
  PackAndAdvance(srcPtr, dstPtr, srcBytes);
}

KWE_API void KWE_CALL UnpackBits(Ptr* srcPtr, Ptr* dstPtr, SInt16 dstBytes) {
  UnpackAndAdvance(srcPtr, dstPtr, dstBytes);
}

KWE_API void KWE_CALL HPackBits(Ptr* srcPtr, Ptr* dstPtr, SInt16 srcBytes) {
  PackAndAdvance(srcPtr, dstPtr, srcBytes);
}

KWE_API void KWE_CALL HUnpackBits(Ptr* srcPtr, Ptr* dstPtr, SInt16 dstBytes) {
  UnpackAndAdvance(srcPtr, dstPtr, dstBytes);
}
