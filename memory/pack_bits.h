// PackBits run-length coding over byte ranges whose lengths are known, for
// the managers that read packed data out of resources and pictures (where
// the packed length comes from the file and must be trusted no further).
#pragma once
#include <cstddef>
#include <cstdint>

namespace kwe::packbits {

// The most bytes Pack can produce for count input bytes.
constexpr size_t MaxPackedSize(size_t count) { return count + (count + 126) / 127; }

// Packs count bytes into out, which must hold MaxPackedSize(count) bytes.
// Returns the number of bytes written.
size_t Pack(const uint8_t* src, size_t count, uint8_t* out);

struct UnpackProgress {
  size_t read;     // packed bytes consumed (a header whose data is missing counts)
  size_t written;  // bytes produced; less than wanted when the packed data ran out
};

// Unpacks until wanted bytes are produced or the srcSize packed bytes are
// used up. Reads no byte at or past src + srcSize, writes none at or past
// dst + wanted.
UnpackProgress Unpack(const uint8_t* src, size_t srcSize, uint8_t* dst, size_t wanted);

}  // namespace kwe::packbits
