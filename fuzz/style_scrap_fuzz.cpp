// Style scraps and style-run tables from outside bytes, then a script of
// edits over them: the scrap reader never reads past its bytes, a table
// the mender takes stays consistent through every insertion, removal and
// restyling, and one it refuses is never worked on.
// Input: a 16-bit length and that many scrap bytes; a byte of run count,
// a byte of style count, the runs (start, index: 4 bytes each); then edit
// steps of four bytes (kind, offset, length, style).
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "text/textedit/style_runs.h"

using namespace kwe::textedit;

namespace {

struct Reader {
  const uint8_t* data;
  size_t size, at = 0;
  bool Take(void* out, size_t n) {
    if (size - at < n) return false;
    std::memcpy(out, data + at, n);
    at += n;
    return true;
  }
};

STElement StyleNumbered(int n) {
  STElement s{};
  s.stFont = SInt16(n % 5);
  s.stSize = SInt16(9 + n % 3);
  s.stHeight = 12;
  return s;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Reader in{data, size};
  uint16_t scrapLength = 0;
  if (!in.Take(&scrapLength, 2)) return 0;
  scrapLength = uint16_t(std::min<size_t>(scrapLength, size - in.at));
  std::vector<uint8_t> scrap(data + in.at, data + in.at + scrapLength);
  in.at += scrapLength;
  std::vector<ScrpSTElement> elements;
  if (ReadStyleScrap(scrap.data(), scrap.size(), &elements)) {
    if (scrap.size() < 2 + elements.size() * sizeof(ScrpSTElement)) std::abort();
    for (size_t i = 1; i < elements.size(); ++i)
      if (elements[i].scrpStartChar < elements[i - 1].scrpStartChar) std::abort();
    std::vector<UInt8> again = WriteStyleScrap(elements);
    if (std::memcmp(again.data(), scrap.data(), again.size()) != 0) std::abort();
  }
  uint8_t runCount = 0, styleCount = 0;
  if (!in.Take(&runCount, 1) || !in.Take(&styleCount, 1)) return 0;
  RunTable t;
  for (int i = 0; i < styleCount % 8 + 1; ++i) t.styles.push_back(StyleNumbered(i));
  for (int i = 0; i < runCount % 16; ++i) {
    StyleRun r;
    if (!in.Take(&r, sizeof r)) break;
    t.runs.push_back(r);
  }
  int length = t.runs.empty() ? 0 : t.runs.back().startChar - 1;
  if (length < 0 || length > 32000 || !MendRunTable(t, length)) return 0;
  if (!RunTableConsistent(t, length)) std::abort();
  uint8_t step[4];
  while (in.Take(step, 4)) {
    int offset = length ? step[1] % (length + 1) : 0;
    int n = step[2] % 40;
    switch (step[0] % 3) {
      case 0:
        if (length + n > 32000) break;
        InsertRuns(t, offset, n, step[3] % 2 ? elements : std::vector<ScrpSTElement>{}, nullptr);
        length += n;
        break;
      case 1:
        n = std::min(n, length - offset);
        RemoveRuns(t, offset, n);
        length -= n;
        break;
      case 2: {
        n = std::min(n, length - offset);
        RemoveRuns(t, offset, n);
        InsertRuns(t, offset, n, {ElementOf(StyleNumbered(step[3]), 0)}, nullptr);
        break;
      }
    }
    if (!RunTableConsistent(t, length)) std::abort();
  }
  return 0;
}
