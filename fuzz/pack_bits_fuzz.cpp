// PackBits on arbitrary bytes. Unpacking hostile or truncated run data into
// a destination of any length reads nothing past the packed bytes and writes
// nothing past the destination (the sanitizer sees both, since each lives in
// a block of its exact size); packing any bytes and unpacking them gives the
// same bytes back, within the packed size's bound.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "memory/pack_bits.h"

using namespace kwe::packbits;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  size_t wanted = (static_cast<size_t>(data[0]) << 8 | data[1]) % 4097;
  const uint8_t* body = data + 2;
  size_t bodySize = size - 2;

  std::vector<uint8_t> packed(body, body + bodySize);
  std::vector<uint8_t> out(wanted);
  UnpackProgress progress = Unpack(packed.data(), packed.size(), out.data(), out.size());
  if (progress.read > packed.size() || progress.written > wanted) std::abort();

  std::vector<uint8_t> repacked(MaxPackedSize(bodySize));
  size_t length = Pack(body, bodySize, repacked.data());
  if (length > repacked.size()) std::abort();
  repacked.resize(length);
  std::vector<uint8_t> again(bodySize);
  progress = Unpack(repacked.data(), repacked.size(), again.data(), again.size());
  if (progress.written != bodySize || progress.read != length) std::abort();
  if (bodySize && std::memcmp(again.data(), body, bodySize) != 0) std::abort();
  return 0;
}
