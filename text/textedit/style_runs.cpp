#include "text/textedit/style_runs.h"

#include <algorithm>
#include <cstring>

namespace kwe::textedit {

static_assert(sizeof(ScrpSTElement) == 20, "ScrpSTElement is 20 bytes");
static_assert(sizeof(STElement) == 18, "STElement is 18 bytes");
static_assert(sizeof(StyleRun) == 4, "StyleRun is 4 bytes");

int RunAt(const RunTable& t, int offset) {
  int n = int(t.runs.size()), i = 0;
  while (i < n - 1 && t.runs[i].startChar < offset) ++i;
  if (t.runs[i].startChar != offset && i > 0) --i;
  if (i == n - 1 && n > 1) --i;
  return i;
}

bool SameStyle(const STElement& a, const STElement& b) {
  return a.stFont == b.stFont && a.stFace == b.stFace && a.stSize == b.stSize &&
         a.stColor.red == b.stColor.red && a.stColor.green == b.stColor.green &&
         a.stColor.blue == b.stColor.blue;
}

int FindOrAddStyle(RunTable& t, const STElement& attrs, const MeasureStyle& measure) {
  for (size_t i = 0; i < t.styles.size(); ++i)
    if (SameStyle(t.styles[i], attrs)) return int(i);
  STElement e = attrs;
  e.stCount = 0;
  e.filler = 0;
  if (e.stHeight <= 0 && measure) measure(e);
  t.styles.push_back(e);
  return int(t.styles.size()) - 1;
}

void ReleaseStyle(RunTable& t, int index) {
  if (index < 0 || index >= int(t.styles.size())) return;
  if (--t.styles[index].stCount > 0 || t.styles.size() == 1) return;
  int last = int(t.styles.size()) - 1;
  if (index != last) {
    t.styles[index] = t.styles[last];
    for (StyleRun& r : t.runs)
      if (r.styleIndex == last) r.styleIndex = SInt16(index);
  }
  t.styles.pop_back();
}

static void Use(RunTable& t, int index) {
  if (index >= 0 && index < int(t.styles.size())) t.styles[index].stCount++;
}

int SplitAt(RunTable& t, int offset) {
  int last = int(t.runs.size()) - 1;
  if (offset <= t.runs[0].startChar) return 0;
  // The end marker stands one past the text: text ends where it starts.
  if (offset >= t.runs[last].startChar - 1) return last;
  int i = RunAt(t, offset);
  if (t.runs[i].startChar == offset) return i;
  StyleRun second{SInt16(offset), t.runs[i].styleIndex};
  Use(t, second.styleIndex);
  t.runs.insert(t.runs.begin() + i + 1, second);
  return i + 1;
}

void InsertRuns(RunTable& t, int offset, int n, const std::vector<ScrpSTElement>& elements,
                const MeasureStyle& measure) {
  if (n <= 0 || t.runs.empty()) return;
  int here = t.runs[RunAt(t, offset)].styleIndex;
  int k = t.runs.size() > 1 ? SplitAt(t, offset) : 0;
  for (size_t i = size_t(k); i < t.runs.size(); ++i)
    t.runs[i].startChar = SInt16(t.runs[i].startChar + n);
  std::vector<StyleRun> added;
  for (const ScrpSTElement& e : elements) {
    if (e.scrpStartChar >= n) break;
    int start = added.empty() ? offset : offset + int(e.scrpStartChar);
    if (!added.empty() && start <= added.back().startChar) continue;
    int index = FindOrAddStyle(t, AttributesOf(e), measure);
    Use(t, index);
    added.push_back({SInt16(start), SInt16(index)});
  }
  if (added.empty()) {
    Use(t, here);
    added.push_back({SInt16(offset), SInt16(here)});
  }
  t.runs.insert(t.runs.begin() + k, added.begin(), added.end());
  MergeRuns(t);
}

void RemoveRuns(RunTable& t, int start, int n) {
  if (n <= 0 || t.runs.size() < 2) return;
  int end = std::min(start + n, int(t.runs.back().startChar) - 1);
  if (end <= start) return;
  n = end - start;
  int a = SplitAt(t, start);
  int b = SplitAt(t, end);
  for (int i = a; i < b; ++i) ReleaseStyle(t, t.runs[i].styleIndex);
  t.runs.erase(t.runs.begin() + a, t.runs.begin() + b);
  for (size_t i = size_t(a); i < t.runs.size(); ++i)
    t.runs[i].startChar = SInt16(t.runs[i].startChar - n);
  MergeRuns(t);
}

void MergeRuns(RunTable& t) {
  size_t i = 1;
  while (t.runs.size() >= 3 && i + 1 < t.runs.size()) {
    if (t.runs[i].styleIndex == t.runs[i - 1].styleIndex) {
      int index = t.runs[i].styleIndex;
      t.runs.erase(t.runs.begin() + long(i));
      ReleaseStyle(t, index);
    } else {
      ++i;
    }
  }
}

ScrpSTElement ElementOf(const STElement& s, int start) {
  ScrpSTElement e{};
  e.scrpStartChar = start;
  e.scrpHeight = s.stHeight;
  e.scrpAscent = s.stAscent;
  e.scrpFont = s.stFont;
  e.scrpFace = s.stFace;
  e.scrpSize = s.stSize;
  e.scrpColor = s.stColor;
  return e;
}

STElement AttributesOf(const ScrpSTElement& e) {
  STElement s{};
  s.stHeight = e.scrpHeight;
  s.stAscent = e.scrpAscent;
  s.stFont = e.scrpFont;
  s.stFace = e.scrpFace;
  s.stSize = e.scrpSize;
  s.stColor = e.scrpColor;
  return s;
}

bool ReadStyleScrap(const void* bytes, size_t size, std::vector<ScrpSTElement>* out) {
  out->clear();
  SInt16 count = 0;
  if (!bytes || size < sizeof count) return false;
  std::memcpy(&count, bytes, sizeof count);
  if (count < 0 || size < sizeof count + size_t(count) * sizeof(ScrpSTElement)) return false;
  const auto* p = static_cast<const UInt8*>(bytes) + sizeof count;
  SInt32 previous = 0;
  for (int i = 0; i < count; ++i) {
    ScrpSTElement e;
    std::memcpy(&e, p + size_t(i) * sizeof e, sizeof e);
    if (e.scrpStartChar < previous) {
      out->clear();
      return false;
    }
    previous = e.scrpStartChar;
    out->push_back(e);
  }
  return true;
}

std::vector<UInt8> WriteStyleScrap(const std::vector<ScrpSTElement>& elements) {
  SInt16 count = SInt16(elements.size());
  std::vector<UInt8> bytes(sizeof count + elements.size() * sizeof(ScrpSTElement));
  std::memcpy(bytes.data(), &count, sizeof count);
  if (!elements.empty())
    std::memcpy(bytes.data() + sizeof count, elements.data(),
                elements.size() * sizeof(ScrpSTElement));
  return bytes;
}

bool MendRunTable(RunTable& t, int length) {
  if (t.runs.empty() || t.styles.empty() || t.runs.back().startChar != length + 1) return false;
  // The end marker stands alone only before any text is inserted, and no
  // other run starts where the text ends.
  if (t.runs.size() == 1 && length != 0) return false;
  if (t.runs.size() > 1 && t.runs[0].startChar != 0) return false;
  if (t.runs.size() > 1 && t.runs[t.runs.size() - 2].startChar >= length) return false;
  for (STElement& s : t.styles) s.stCount = 0;
  for (size_t i = 0; i < t.runs.size(); ++i) {
    const StyleRun& r = t.runs[i];
    if (r.styleIndex < 0 || r.styleIndex >= int(t.styles.size())) return false;
    if (i > 0 && r.startChar <= t.runs[i - 1].startChar) return false;
    t.styles[size_t(r.styleIndex)].stCount++;
  }
  return true;
}

bool RunTableConsistent(const RunTable& t, int length) {
  if (t.runs.empty() || t.styles.empty() || t.runs.back().startChar != length + 1) return false;
  if (t.runs.size() == 1 && length != 0) return false;
  if (t.runs.size() > 1 && t.runs[0].startChar != 0) return false;
  std::vector<int> uses(t.styles.size());
  for (size_t i = 0; i < t.runs.size(); ++i) {
    const StyleRun& r = t.runs[i];
    if (r.styleIndex < 0 || r.styleIndex >= int(t.styles.size())) return false;
    if (i > 0 && r.startChar <= t.runs[i - 1].startChar) return false;
    uses[size_t(r.styleIndex)]++;
  }
  for (size_t i = 0; i < t.styles.size(); ++i)
    if (t.styles[i].stCount != uses[i]) return false;
  return true;
}

}  // namespace kwe::textedit
