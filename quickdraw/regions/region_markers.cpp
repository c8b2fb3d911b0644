// The objects every region shares: two empty Win32 regions whose handles mark
// a rectangle and a mask region, the scratch rectangle region through which
// rectangles reach GDI, and the scratch RgnHandle of the clipping code.
// InitGraf makes them; a region call made before InitGraf makes them itself,
// so regions work in a program that never opens a port.
#include <windows.h>

#include "Memory.h"
#include "frame/subsystems.h"
#include "quickdraw/regions/region_record.h"

namespace kwe::quickdraw {
namespace {
HRGN g_rectangleMarker = nullptr;
HRGN g_maskMarker = nullptr;
HRGN g_scratchRectangles[2] = {};
RgnHandle g_scratchRegion = nullptr;
}  // namespace

void StartRegions() {
  if (g_rectangleMarker) return;
  g_rectangleMarker = CreateRectRgn(0, 0, 0, 0);
  g_maskMarker = CreateRectRgn(0, 0, 0, 0);
  for (HRGN& scratch : g_scratchRectangles) scratch = CreateRectRgn(0, 0, 0, 0);
  g_scratchRegion = NewRgn();
}

HRGN RectangleMarker() {
  StartRegions();
  return g_rectangleMarker;
}

HRGN MaskMarker() {
  StartRegions();
  return g_maskMarker;
}

HRGN ScratchRectangleRegion(int which) {
  StartRegions();
  return g_scratchRectangles[which & 1];
}

RgnHandle ScratchRegion() {
  StartRegions();
  return g_scratchRegion;
}

// The session's end: the scratch RgnHandle goes back to the Memory Manager
// before its blocks are released, the markers last.
void EndRegions() {
  if (!g_rectangleMarker) return;
  DisposeRgn(g_scratchRegion);
  g_scratchRegion = nullptr;
  for (HRGN& scratch : g_scratchRectangles) {
    DeleteObject(scratch);
    scratch = nullptr;
  }
  DeleteObject(g_maskMarker);
  DeleteObject(g_rectangleMarker);
  g_maskMarker = g_rectangleMarker = nullptr;
}

}  // namespace kwe::quickdraw
