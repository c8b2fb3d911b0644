// ParamText's expansion on seeded random texts against a plain string
// replacement (that reads stay inside their bytes is the fuzz targets'
// work). A failure prints its step.
#include "dialogs/dialog_data.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

namespace {

using namespace kwe::dialogs;

TEST(DialogData, ExpansionMatchesStringReplacement) {
  std::mt19937 rng(7);
  const char alphabet[] = "ab^0123";
  for (int step = 0; step < 2000; ++step) {
    std::string params[4];
    for (auto& p : params) p = std::string(rng() % 90, 'p');
    params[1] = "one";
    std::string text;
    for (int i = 0, n = int(rng() % 40); i < n; ++i) text += alphabet[rng() % 7];
    UInt8 strings[4][256];
    const UInt8* ptrs[4];
    for (int k = 0; k < 4; ++k) {
      strings[k][0] = UInt8(params[k].size());
      std::memcpy(strings[k] + 1, params[k].data(), params[k].size());
      ptrs[k] = strings[k];
    }
    if (step % 5 == 0) ptrs[3] = nullptr;
    std::string expect;
    unsigned used = 0;
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '^' && i + 1 < text.size() && text[i + 1] >= '0' && text[i + 1] <= '3') {
        int k = text[++i] - '0';
        used |= 1u << k;
        if (ptrs[k]) expect += params[k];
      } else {
        expect += text[i];
      }
    }
    bool cut = expect.size() > 255;
    if (cut) expect.resize(255);
    UInt8 out[256];
    unsigned got =
        ExpandParameters(reinterpret_cast<const UInt8*>(text.data()), text.size(), ptrs, out);
    ASSERT_EQ(std::string(reinterpret_cast<char*>(out + 1), out[0]), expect) << "step " << step;
    if (!cut) {
      ASSERT_EQ(got, used) << "step " << step;
    }
  }
}

}  // namespace
