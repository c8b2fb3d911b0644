// The colour QuickDraw demonstration as a user meets it: the wheel's hues
// where their arcs lie, the spectrum strip, the Colour menu switching the
// strip to a grey ramp with its check mark, a click inverting a square of
// the picture (and a second click putting it back), and File > Quit.
#include <cstdio>

#include "host/program_driver.h"

namespace {

using namespace kwe_drive;

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);

HWND DemoWindow() {
  for (HWND w : LibraryWindows())
    if (TextOf(w) == "Colour QuickDraw") return w;
  return nullptr;
}

std::string Hex(COLORREF c) {
  char text[16];
  std::snprintf(text, sizeof text, "%06lX", static_cast<unsigned long>(c));
  return text;
}

// The middle of strip bar i (20 pixels wide from x = 20, y 240 to 280).
COLORREF Bar(HWND w, int i) { return ClientPixel(w, 30 + 20 * i, 260); }

bool Checked(int menu, int item) {
  HMENU popup = GetSubMenu(GetMenu(MainWindow()), menu);
  return (GetMenuState(popup, item, MF_BYPOSITION) & MF_CHECKED) != 0;
}

// The marks reach Windows when the menu opens, as a user opens it.
void OpenMenu(int menu) {
  HMENU popup = GetSubMenu(GetMenu(MainWindow()), menu);
  PostMessageA(MainWindow(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup),
               MAKELPARAM(menu, 0));
}

void Script() {
  WaitFor([] { return DemoWindow() != nullptr; }, "the colour window is shown");
  HWND w = DemoWindow();
  // Wedge i spans 30i to 30i + 30 degrees clockwise from 12 o'clock around
  // (120, 120); these points lie 60 pixels out in the middle of wedges 0, 4
  // and 8, whose hues are 0, 1/3 and 2/3 of the circle.
  WaitFor([&] { return ClientPixel(w, 136, 62) == kRed; }, "wedge 0 of the wheel is red");
  Check(ClientPixel(w, 162, 162) == kGreen, "wedge 4 is green: " + Hex(ClientPixel(w, 162, 162)));
  Check(ClientPixel(w, 62, 136) == kBlue, "wedge 8 is blue: " + Hex(ClientPixel(w, 62, 136)));
  Check(Bar(w, 0) == kRed && Bar(w, 4) == kGreen && Bar(w, 8) == kBlue,
        "the spectrum strip runs through the same hues");
  OpenMenu(2);
  WaitFor([] { return Checked(2, 0) && !Checked(2, 1); }, "Spectrum is checked in the Colour menu");

  ChooseMenuItem(2, 1);  // Colour > Greys
  WaitFor([&] { return Bar(w, 0) == RGB(0, 0, 0) && Bar(w, 11) == RGB(255, 255, 255); },
          "Greys redraws the strip from black to white");
  int previous = -1;
  bool ramp = true;
  for (int i = 0; i < 12; ++i) {
    COLORREF c = Bar(w, i);
    ramp = ramp && GetRValue(c) == GetGValue(c) && GetGValue(c) == GetBValue(c) &&
           GetRValue(c) > previous;
    previous = GetRValue(c);
  }
  Check(ramp, "every bar is grey and lighter than the one before");
  OpenMenu(2);
  WaitFor([] { return !Checked(2, 0) && Checked(2, 1); }, "the check mark moves to Greys");

  ClickClient(w, 136, 62);
  WaitFor([&] { return ClientPixel(w, 136, 62) == RGB(0, 255, 255); },
          "a click inverts the red under it to cyan");
  Check(ClientPixel(w, 136 + 12, 62) != RGB(0, 255, 255), "the inverted square is 20 wide");
  ClickClient(w, 136, 62);
  WaitFor([&] { return ClientPixel(w, 136, 62) == kRed; }, "a second click inverts it back");

  Finished();
  ChooseMenuItem(1, 0);  // File > Quit
}

const bool g_started = StartScript(Script);

}  // namespace
