// ParamText's "^0".."^3" expansion on arbitrary text and parameters (the
// first bytes give the four parameters' lengths): the result is a Pascal
// string of at most 255 characters made only of the text's own bytes and
// the parameters', and without a "^" in the text nothing changes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "dialogs/dialog_data.h"

using namespace kwe::dialogs;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 4) return 0;
  std::vector<std::vector<UInt8>> params(4);
  size_t at = 4;
  const UInt8* pointers[4] = {};
  for (int k = 0; k < 4; ++k) {
    size_t length = std::min<size_t>(data[k], size - at);
    params[size_t(k)].push_back(UInt8(length));
    params[size_t(k)].insert(params[size_t(k)].end(), data + at, data + at + length);
    at += length;
    if (data[k] != 0xFF) pointers[k] = params[size_t(k)].data();
  }
  std::vector<UInt8> text(data + at, data + size);
  UInt8 out[256];
  std::memset(out, 0xCC, sizeof out);
  unsigned used = ExpandParameters(text.data(), text.size(), pointers, out);
  if (used > 15) std::abort();
  if (text.empty() || !std::memchr(text.data(), '^', text.size())) {
    size_t expect = std::min<size_t>(text.size(), 255);
    if (out[0] != expect || (expect && std::memcmp(out + 1, text.data(), expect) != 0))
      std::abort();
  }
  return 0;
}
