// The outline cache: a hash map from shape to what drawing it needs.
#include "quickdraw/shapes/outline_cache.h"

#include <unordered_map>

namespace kwe::quickdraw {
namespace {

struct ShapeHash {
  size_t operator()(const OutlineShape& s) const {
    uint64_t h = static_cast<uint64_t>(s.kind) * 2 + s.area;
    for (int32_t v : {s.width, s.height, s.first, s.second})
      h = (h ^ static_cast<uint32_t>(v)) * 0x100000001B3ull;
    return static_cast<size_t>(h ^ (h >> 29));
  }
};

struct ShapeEqual {
  bool operator()(const OutlineShape& x, const OutlineShape& y) const {
    return x.kind == y.kind && x.area == y.area && x.width == y.width && x.height == y.height &&
           x.first == y.first && x.second == y.second;
  }
};

// A framed shape keeps its outline, an area shape only its spans.
struct Entry {
  Outline outline;
  SpanList spans;
};

using Cache = std::unordered_map<OutlineShape, Entry, ShapeHash, ShapeEqual>;

Cache& TheCache() {
  static Cache* cache = new Cache();  // lives to the end of the process
  return *cache;
}

}  // namespace

// A point in the middle of a straight run lies on the lattice line GDI
// steps along anyway, so the longer segment draws the same pixels.
Outline Simplified(const Outline& points) {
  Outline kept;
  kept.reserve(points.size());
  for (const OutlinePoint& p : points) {
    if (!kept.empty() && kept.back().x == p.x && kept.back().y == p.y) continue;
    size_t n = kept.size();
    if (n >= 2) {
      const OutlinePoint &a = kept[n - 2], &b = kept[n - 1];
      int64_t cross = int64_t(b.x - a.x) * (p.y - b.y) - int64_t(b.y - a.y) * (p.x - b.x);
      int64_t dot = int64_t(b.x - a.x) * (p.x - b.x) + int64_t(b.y - a.y) * (p.y - b.y);
      if (cross == 0 && dot > 0) {
        kept.back() = p;
        continue;
      }
    }
    kept.push_back(p);
  }
  return kept;
}

namespace {

Outline Compute(const OutlineShape& s) {
  Outline points;
  if (s.kind == OutlineKind::RoundRect)
    points = RoundRectOutline(0, 0, s.width, s.height, s.first, s.second);
  else
    points = ArcOutline(0, 0, s.width, s.height, s.first, s.second);
  // A wedge closes at the centre, rounded as the outline's points are.
  if (s.kind == OutlineKind::Wedge)
    points.push_back(OutlinePoint{(s.width + 1) / 2, (s.height + 1) / 2});
  return Simplified(points);
}

// The shape's entry; a new one is filled by the caller.
Entry& Find(const OutlineShape& shape, bool* made) {
  Cache& cache = TheCache();
  auto found = cache.find(shape);
  *made = found == cache.end();
  if (!*made) return found->second;
  if (cache.size() >= kOutlineCacheLimit) cache.clear();
  return cache[shape];
}

}  // namespace

const Outline& PlacedOutline(const OutlineShape& shape, int left, int top) {
  bool made = false;
  Entry& entry = Find(shape, &made);
  if (made) entry.outline = Compute(shape);
  static Outline placed;
  placed.resize(entry.outline.size());
  OutlinePoint* out = placed.data();
  for (const OutlinePoint& p : entry.outline) *out++ = OutlinePoint{p.x + left, p.y + top};
  return placed;
}

const SpanList& ShapeSpans(const OutlineShape& shape, SpanMaker makeSpans) {
  bool made = false;
  Entry& entry = Find(shape, &made);
  if (made) entry.spans = makeSpans(Compute(shape));
  return entry.spans;
}

size_t OutlineCacheSize() { return TheCache().size(); }

}  // namespace kwe::quickdraw
