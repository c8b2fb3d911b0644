// Outlines of ovals, arcs, wedges and rounded rectangles kept by shape.
// Programs of the era redraw the same shapes every tick (a bouncing ball, a
// plot's markers, a game's sprites), so each shape is worked out once for
// its size and angles and moved to where it is drawn: a frame keeps its
// outline, a filled shape the rectangles its polygon covers, which GDI
// fills faster than it converts the polygon again. The cache holds a
// bounded number of shapes; when it is full it starts again empty.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "quickdraw/shapes/shape_outlines.h"

namespace kwe::quickdraw {

enum class OutlineKind : uint8_t {
  Arc,        // ArcOutline: first, second = start and arc angles
  Wedge,      // an arc closed at the centre of its rectangle
  RoundRect,  // RoundRectOutline: first, second = corner diameters
};

// A shape whose outline runs inside 0..width, 0..height (the right and
// bottom arguments of the outline calls). An area shape is filled, the
// other framed.
struct OutlineShape {
  OutlineKind kind;
  bool area;
  int32_t width, height;
  int32_t first, second;
};

// Rectangles, right and bottom exclusive.
struct ShapeSpan {
  int32_t left, top, right, bottom;
};
using SpanList = std::vector<ShapeSpan>;

// What the platform's polygon fill covers of an outline (alternate rule).
using SpanMaker = SpanList (*)(const Outline& outline);

constexpr size_t kOutlineCacheLimit = 4096;

// The outline of a framed shape moved by (left, top): the points
// ArcOutline or RoundRectOutline give for the rectangle at that place,
// less repeated points and points inside a straight run (a polyline draws
// the same pixels without them). Good until the next call.
const Outline& PlacedOutline(const OutlineShape& shape, int left, int top);

// The rectangles of an area shape at the origin, made by makeSpans from
// its outline the first time. Good until the next call.
const SpanList& ShapeSpans(const OutlineShape& shape, SpanMaker makeSpans);

// points less repeated points and the points in the middle of straight runs
// that continue in the same direction.
Outline Simplified(const Outline& points);

// How many shapes the cache holds now; never more than kOutlineCacheLimit.
size_t OutlineCacheSize();

}  // namespace kwe::quickdraw
