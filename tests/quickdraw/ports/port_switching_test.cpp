// Switching and closing ports: the screen port after the current port is
// closed, and what a port gives back to the window server.
#include <gtest/gtest.h>
#include <windows.h>

#include "KWEPorts.h"
#include "Quickdraw.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

class PortSwitching : public PortTest {};

// Closing the current port makes the screen port current; it draws on the
// screen as soon as the program draws there, and the window DCs it takes
// are given back when another port is set, cycle after cycle.
TEST_F(PortSwitching, ClosingTheCurrentPortLeavesTheScreenPortDrawing) {
  Rect r{40, 40, 60, 60};
  for (int cycle = 0; cycle < 3; ++cycle) {
    SCOPED_TRACE(cycle);
    GrafPort temporary;
    OpenPort(&temporary);
    ClosePort(&temporary);
    ASSERT_EQ(vars.thePort, screen);
    EraseRect(&r);
    EXPECT_FALSE(GetPixel(50, 50));
    PaintRect(&r);
    EXPECT_TRUE(GetPixel(50, 50)) << "drawn on the screen";
    EraseRect(&r);
    SetPort(&port);
    EXPECT_NE(KWE_GetCurrentDC(), nullptr);
  }
  int before = LiveGdiObjects();
  for (int i = 0; i < 50; ++i) {
    GrafPort temporary;
    OpenPort(&temporary);
    ClosePort(&temporary);
    if (i % 2) {
      EXPECT_NE(KWE_GetCurrentDC(), nullptr) << "the screen's DC, taken on demand";
    }
    SetPort(&port);
  }
  if (before >= 0) {
    EXPECT_LE(LiveGdiObjects(), before + 2);
  }
}

}  // namespace
