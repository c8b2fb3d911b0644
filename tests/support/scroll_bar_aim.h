// Where a user aims at a part of a vertical scroll bar, in screen
// coordinates, from what USER says of the bar's arrows and thumb.
#pragma once
#include <windows.h>

#include "Controls.h"

namespace kwe_test {

inline POINT Aim(HWND bar, SInt16 part) {
  SCROLLBARINFO info{};
  info.cbSize = sizeof info;
  GetScrollBarInfo(bar, OBJID_CLIENT, &info);
  RECT r;
  GetWindowRect(bar, &r);
  int x = (r.left + r.right) / 2, arrow = info.dxyLineButton;
  int thumbTop = r.top + info.xyThumbTop, thumbBottom = r.top + info.xyThumbBottom;
  switch (part) {
    case inUpButton: return POINT{x, r.top + arrow / 2};
    case inDownButton: return POINT{x, r.bottom - arrow / 2 - 1};
    case inPageUp: return POINT{x, (r.top + arrow + thumbTop) / 2};
    case inPageDown: return POINT{x, (thumbBottom + r.bottom - arrow) / 2};
    default: return POINT{x, (thumbTop + thumbBottom) / 2};
  }
}

}  // namespace kwe_test
