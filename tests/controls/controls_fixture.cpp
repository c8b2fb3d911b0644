#include "controls/controls_fixture.h"

#include <cstring>

namespace kwe_test {

std::string PascalText(const UInt8* text) {
  return std::string(reinterpret_cast<const char*>(text + 1), text[0]);
}

HWND ChildWindow(ControlHandle c) {
  // Offset 292 of the 32-bit record: 252 bytes into contrlTitle, a
  // sign-extended 32-bit handle in every build.
  SInt32 slot;
  std::memcpy(&slot, (**c).contrlTitle + 252, sizeof slot);
  return reinterpret_cast<HWND>(static_cast<intptr_t>(slot));
}

std::string ClassOf(HWND hwnd) {
  char name[64] = "";
  GetClassNameA(hwnd, name, sizeof name);
  for (char& ch : name) ch = char(std::tolower(UInt8(ch)));
  return name;
}

std::string ScrollState(HWND bar) {
  SCROLLINFO si{sizeof si, SIF_RANGE | SIF_POS, 0, 0, 0, 0, 0};
  GetScrollInfo(bar, SB_CTL, &si);
  return std::to_string(si.nMin) + ".." + std::to_string(si.nMax) + " @ " + std::to_string(si.nPos);
}

std::string PlaceOf(HWND child) {
  RECT r;
  GetWindowRect(child, &r);
  MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&r), 2);
  return std::to_string(r.top) + "," + std::to_string(r.left) + "," + std::to_string(r.bottom) +
         "," + std::to_string(r.right);
}

void ControlTest::SetUp() {
  WindowTest::SetUp();
  window = WindowTest::Make(documentProc, Rect{40, 40, 300, 400});
  SetPort(window);
  Drain();
}

ControlHandle ControlTest::Make(SInt16 procID, Rect bounds, SInt16 value, SInt16 min, SInt16 max,
                                const char* title, SInt32 refCon, bool visible) {
  return NewControl(window, &bounds, PStr(title), visible, value, min, max, procID, refCon);
}

Point ControlTest::Centre(ControlHandle c) {
  const Rect& r = (**c).contrlRect;
  return Point{SInt16((r.top + r.bottom) / 2), SInt16((r.left + r.right) / 2)};
}

SInt16 ControlTest::HandleClick(ProcPtr action, ControlHandle* hit, DWORD waitMs) {
  EventRecord e;
  for (DWORD start = GetTickCount(); GetTickCount() - start < waitMs;) {
    if (!GetNextEvent(mDownMask, &e)) continue;
    WindowPtr w = nullptr;
    if (FindWindow(e.where, &w) != inContent || w != window) continue;
    Point local = e.where;
    GlobalToLocal(&local);
    ControlHandle c = nullptr;
    if (!FindControl(local, w, &c) || !c) continue;
    if (hit) *hit = c;
    return TrackControl(c, local, action);
  }
  return -1;
}

}  // namespace kwe_test
