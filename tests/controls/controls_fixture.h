// A document window of a session with InitGraf and InitWindows done, and
// helpers to make controls in it and to read back what USER holds for them.
#pragma once
#include <string>

#include "KWEControls.h"
#include "windows/windows_fixture.h"

namespace kwe_test {

inline const UInt8* PStr(const char* text) { return reinterpret_cast<const UInt8*>(text); }
std::string PascalText(const UInt8* text);

// The Win32 child window of a control, from the record's published slot.
HWND ChildWindow(ControlHandle c);
std::string ClassOf(HWND hwnd);
// GetScrollInfo's range and position, "min..max @ pos".
std::string ScrollState(HWND bar);
// The child's rectangle in its parent's client area, "top,left,bottom,right".
std::string PlaceOf(HWND child);

class ControlTest : public WindowTest {
 protected:
  void SetUp() override;
  ControlHandle Make(SInt16 procID, Rect bounds, SInt16 value = 0, SInt16 min = 0, SInt16 max = 1,
                     const char* title = "\x02OK", SInt32 refCon = 0, bool visible = true);
  // The centre of the control's rectangle, local coordinates.
  Point Centre(ControlHandle c);
  // The application's event loop for one click: the next mouseDown in the
  // window's content found with FindControl and tracked with TrackControl.
  // The part TrackControl answers, or -1 when no mouseDown reached a
  // control within waitMs.
  SInt16 HandleClick(ProcPtr action = nullptr, ControlHandle* hit = nullptr, DWORD waitMs = 3000);

  WindowPtr window = nullptr;
};

using ControlsOnTop = OnTop<ControlTest>;

}  // namespace kwe_test
