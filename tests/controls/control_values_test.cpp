// Values, ranges and titles set through the Toolbox, read back from the
// Win32 controls, and the user's changes read back through the Toolbox.
#include <gtest/gtest.h>

#include "controls/controls_fixture.h"

namespace {

using namespace kwe_test;

TEST_F(ControlTest, KindsBecomeTheirWin32Controls) {
  const struct {
    SInt16 procID;
    const char* cls;
    LONG style;
  } kinds[] = {{pushButProc, "button", BS_PUSHBUTTON},
               {checkBoxProc, "button", BS_CHECKBOX},
               {radioButProc, "button", BS_RADIOBUTTON},
               {scrollBarProc, "scrollbar", SBS_VERT}};
  for (const auto& k : kinds) {
    ControlHandle c = Make(k.procID, Rect{10, 10, 110, 26});
    ASSERT_NE(c, nullptr) << k.procID;
    HWND child = ChildWindow(c);
    EXPECT_EQ(GetParent(child), KWE_GethWnd(window)) << k.procID;
    EXPECT_EQ(ClassOf(child), k.cls) << k.procID;
    EXPECT_EQ(GetWindowLongA(child, GWL_STYLE) & 0xF, k.style) << k.procID;
    EXPECT_EQ(PeekOf(window)->controlList, c) << k.procID;
  }
}

}  // namespace
