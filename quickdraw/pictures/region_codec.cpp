// The inversion-point encoding of regions, from and to banded rectangles.
#include "quickdraw/pictures/region_codec.h"

#include <algorithm>
#include <map>

namespace kwe::pictures {
namespace {

constexpr uint16_t kEndMark = 0x7FFF;

// Adds h to the sorted edges, or takes it out when it is there: two
// rectangles side by side share an edge that is no edge of the region.
void Toggle(std::vector<int16_t>& edges, int16_t h) {
  auto at = std::lower_bound(edges.begin(), edges.end(), h);
  if (at != edges.end() && *at == h)
    edges.erase(at);
  else
    edges.insert(at, h);
}

void PutWord(std::vector<uint8_t>& out, uint16_t w) {
  out.push_back(static_cast<uint8_t>(w >> 8));
  out.push_back(static_cast<uint8_t>(w));
}

}  // namespace

std::vector<uint8_t> EncodeRegion(const std::vector<PicRect>& rects) {
  std::vector<uint8_t> out;
  if (rects.size() < 2) return out;
  // The edges of the lines from each v downwards; a band's bottom starts
  // an empty line unless another band starts there.
  std::map<int16_t, std::vector<int16_t>> lines;
  std::vector<PicRect> sorted = rects;
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const PicRect& a, const PicRect& b) { return a.top < b.top; });
  for (size_t i = 0; i < sorted.size();) {
    size_t j = i;
    std::vector<int16_t> edges;
    for (; j < sorted.size() && sorted[j].top == sorted[i].top; ++j) {
      if (sorted[j].bottom <= sorted[j].top || sorted[j].right <= sorted[j].left) continue;
      Toggle(edges, sorted[j].left);
      Toggle(edges, sorted[j].right);
    }
    lines[sorted[i].top] = edges;
    lines.emplace(sorted[i].bottom, std::vector<int16_t>{});
    i = j;
  }
  std::vector<int16_t> above;
  for (const auto& [v, edges] : lines) {
    std::vector<int16_t> flips;
    std::set_symmetric_difference(above.begin(), above.end(), edges.begin(), edges.end(),
                                  std::back_inserter(flips));
    if (flips.empty()) continue;
    PutWord(out, static_cast<uint16_t>(v));
    for (int16_t h : flips) PutWord(out, static_cast<uint16_t>(h));
    PutWord(out, kEndMark);
    above = edges;
  }
  PutWord(out, kEndMark);
  return out;
}

bool DecodeRegion(const uint8_t* data, size_t size, std::vector<PicRect>* rects, size_t limit) {
  rects->clear();
  size_t at = 0;
  auto word = [&](uint16_t* w) {
    if (at + 2 > size) return false;
    *w = static_cast<uint16_t>(data[at] << 8 | data[at + 1]);
    at += 2;
    return true;
  };
  std::vector<int16_t> edges;
  int16_t lineV = 0;
  bool first = true;
  for (;;) {
    uint16_t v;
    if (!word(&v)) return false;
    int16_t next = static_cast<int16_t>(v);
    if (v == kEndMark) next = lineV;
    if (!first && next <= lineV && v != kEndMark) return false;
    // The rows from the last line down to this one have its edges.
    if (!first && next > lineV) {
      if (rects->size() + edges.size() / 2 > limit) return false;
      for (size_t i = 0; i + 1 < edges.size(); i += 2)
        rects->push_back(PicRect{lineV, edges[i], next, edges[i + 1]});
    }
    if (v == kEndMark) return true;
    for (;;) {
      uint16_t h;
      if (!word(&h)) return false;
      if (h == kEndMark) break;
      Toggle(edges, static_cast<int16_t>(h));
    }
    lineV = next;
    first = false;
  }
}

}  // namespace kwe::pictures
