// KWE_ByteSwap's table on arbitrary data: the first bytes choose the type
// and the direction, the rest is the resource's data, in a heap block of
// exactly its size so the address sanitizer sees any byte touched past it.
// Every conversion must also be undone exactly by the opposite direction.
#include <cstdlib>
#include <cstring>
#include <memory>

#include "byte_swap_input.h"
#include "resources/byte_swap_records.h"

namespace {

void ConvertCursor(bool isColour, void* data, SInt32 size, UInt32) {
  kwe::byteswap::SwapCursorHotSpot(isColour, static_cast<uint8_t*>(data), size);
}

void Quiet(const char*) {}

const kwe::byteswap::ByteSwapHost kHost = {ConvertCursor, nullptr, Quiet};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t length) {
  if (length < kwe_fuzz::kHeaderBytes || length - kwe_fuzz::kHeaderBytes > 0x7FFFFFFF) return 0;
  ResType type = kwe_fuzz::ChosenType(input[0]);
  UInt32 direction = kwe_fuzz::ChosenDirection(input[1]);
  size_t size = length - kwe_fuzz::kHeaderBytes;
  const uint8_t* original = input + kwe_fuzz::kHeaderBytes;

  std::unique_ptr<uint8_t[]> data(new uint8_t[size]);
  if (size) std::memcpy(data.get(), original, size);
  kwe::byteswap::SwapResource(direction, type, 128, SInt32(size), data.get(), kHost);
  kwe::byteswap::SwapResource(!direction, type, 128, SInt32(size), data.get(), kHost);
  if (size && std::memcmp(data.get(), original, size) != 0) std::abort();  // not undone
  return 0;
}
