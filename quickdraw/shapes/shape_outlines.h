// Outlines of ovals, arcs, rounded rectangles and pen sweeps, in device
// pixels. The curves come from a one-degree sine table, not from GDI's
// curve primitives, so that the points are the Macintosh's: angles run
// clockwise from 12 o'clock and every 4 degrees give one point.
#pragma once
#include <cstdint>
#include <vector>

namespace kwe::quickdraw {

struct OutlinePoint {
  int32_t x, y;
};
using Outline = std::vector<OutlinePoint>;

// sin and cos of whole degrees (any value; reduced modulo 360).
double SineOfDegrees(int degrees);
double CosineOfDegrees(int degrees);

// The arc of the ellipse inscribed in left..right, top..bottom (both
// inclusive) from startAngle over arcAngle degrees; a negative arc runs the
// other way from its end. Empty for an arc angle of 0.
Outline ArcOutline(int left, int top, int right, int bottom, int startAngle, int arcAngle);

// A rounded rectangle's outline: four quarter ellipses of the corner
// diameters joined by the straight sides (closed: the last point is the first).
Outline RoundRectOutline(int left, int top, int right, int bottom, int ovalWidth, int ovalHeight);

// The area a width by height pen covers while its top-left corner travels
// along path: one convex polygon per segment, all clockwise, to be filled
// together with the nonzero winding rule. counts receives each polygon's
// point count.
Outline PenSweep(const Outline& path, int width, int height, std::vector<int>* counts);

}  // namespace kwe::quickdraw
