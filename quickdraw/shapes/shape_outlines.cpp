// The sine table and the outlines built from it.
#include "quickdraw/shapes/shape_outlines.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kwe::quickdraw {
namespace {

constexpr int kStepDegrees = 4;

// sin 0..90 in one-degree steps, exact at both ends.
const double* SineTable() {
  static const auto table = [] {
    static double t[91];
    const double pi = std::acos(-1.0);
    for (int i = 0; i <= 90; ++i) t[i] = std::sin(i * pi / 180.0);
    t[0] = 0.0;
    t[90] = 1.0;
    return t;
  }();
  return table;
}

// To the nearest pixel, halves up. The sine table's values are a few units
// in the last place off, so a point that lies exactly halfway (cos 60 times
// an even radius) is nudged up before rounding; without it the same shape
// would round differently at different places on the screen.
int Rounded(double v) { return static_cast<int>(std::floor(v + 0.5 + 1e-9)); }

}  // namespace

double SineOfDegrees(int degrees) {
  int t = ((degrees % 360) + 360) % 360;
  const double* table = SineTable();
  if (t <= 90) return table[t];
  if (t <= 180) return table[180 - t];
  if (t <= 270) return -table[t - 180];
  return -table[360 - t];
}

double CosineOfDegrees(int degrees) { return SineOfDegrees(degrees + 90); }

Outline ArcOutline(int left, int top, int right, int bottom, int startAngle, int arcAngle) {
  Outline points;
  if (arcAngle == 0) return points;
  if (arcAngle < 0) {
    startAngle += arcAngle;
    arcAngle = -arcAngle;
  }
  arcAngle = std::min(arcAngle, 360);
  while (startAngle < 0) startAngle += 360;
  while (startAngle >= 361) startAngle -= 360;
  double a = (right - left) / 2.0, b = (bottom - top) / 2.0;
  double cx = left + a, cy = top + b;
  int end = startAngle + arcAngle;
  points.reserve(arcAngle / kStepDegrees + 2);
  for (int t = startAngle;; t = std::min(t + kStepDegrees, end)) {
    points.push_back(
        OutlinePoint{Rounded(a * SineOfDegrees(t) + cx), Rounded(cy - b * CosineOfDegrees(t))});
    if (t == end) break;
  }
  return points;
}

Outline RoundRectOutline(int left, int top, int right, int bottom, int ovalWidth, int ovalHeight) {
  double rw = ovalWidth / 2.0, rh = ovalHeight / 2.0;
  // Corner centres, clockwise from the top-right corner (0 to 90 degrees).
  const double centres[4][2] = {{right - rw, top + rh},
                                {right - rw, bottom - rh},
                                {left + rw, bottom - rh},
                                {left + rw, top + rh}};
  Outline points;
  points.reserve(4 * (90 / kStepDegrees + 2) + 1);
  for (int corner = 0; corner < 4; ++corner) {
    int from = corner * 90, to = from + 90;
    for (int t = from;; t = std::min(t + kStepDegrees, to)) {
      points.push_back(OutlinePoint{Rounded(centres[corner][0] + rw * SineOfDegrees(t)),
                                    Rounded(centres[corner][1] - rh * CosineOfDegrees(t))});
      if (t == to) break;
    }
  }
  points.push_back(points.front());
  return points;
}

// Each segment's area is the convex hull of the pen rectangle at its two
// ends: a hexagon for a diagonal, a rectangle for a straight segment.
Outline PenSweep(const Outline& path, int width, int height, std::vector<int>* counts) {
  Outline polygons;
  counts->clear();
  if (path.empty()) return polygons;
  auto add = [&](std::initializer_list<OutlinePoint> points) {
    for (const OutlinePoint& p : points) polygons.push_back(p);
    counts->push_back(static_cast<int>(points.size()));
  };
  if (path.size() == 1) {
    OutlinePoint p = path[0];
    add({{p.x, p.y}, {p.x + width, p.y}, {p.x + width, p.y + height}, {p.x, p.y + height}});
    return polygons;
  }
  for (size_t i = 0; i + 1 < path.size(); ++i) {
    OutlinePoint p = path[i], q = path[i + 1];
    if (q.x < p.x) std::swap(p, q);
    int w = width, h = height;
    if (q.y >= p.y)  // down and to the right
      add({{p.x, p.y},
           {p.x + w, p.y},
           {q.x + w, q.y},
           {q.x + w, q.y + h},
           {q.x, q.y + h},
           {p.x, p.y + h}});
    else  // up and to the right
      add({{p.x, p.y},
           {q.x, q.y},
           {q.x + w, q.y},
           {q.x + w, q.y + h},
           {p.x + w, p.y + h},
           {p.x, p.y + h}});
  }
  return polygons;
}

}  // namespace kwe::quickdraw
