// A session with InitGraf and InitWindows done and the host's main window
// shown, as a ported application starts (and the same with an MDI client);
// helpers to make windows and to read back what USER and GDI hold.
#pragma once
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "Events.h"
#include "KWEWindows.h"
#include "MacWindows.h"
#include "support/test_host.h"
#include "support/user_input.h"

namespace kwe_test {

inline WindowPtr InFront() { return reinterpret_cast<WindowPtr>(intptr_t(-1)); }
inline WindowPeek PeekOf(WindowPtr w) { return reinterpret_cast<WindowPeek>(w); }
inline Point Pt(int h, int v) { return Point{SInt16(v), SInt16(h)}; }
// After a pass with nothing to make, the event calls look for activate and
// update events again only some passes later (system value 5: 32): this many
// null events in a row mean there is none.
constexpr int kQuietPasses = 40;

// Windows of this thread and all their descendants.
int CountUserWindows();

// What a test sees of all the library holds: USER's windows, GDI's objects,
// the Memory Manager's bytes and the window list.
struct Footprint {
  int windows, gdi;
  UInt32 bytes;
  std::vector<WindowPtr> list;
  bool operator==(const Footprint& o) const {
    return windows == o.windows && gdi == o.gdi && bytes == o.bytes && list == o.list;
  }
};
std::ostream& operator<<(std::ostream& out, const Footprint& f);

class WindowTest : public SessionTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  // A window with these bounds and procID, in front and visible by default.
  WindowPtr Make(SInt16 procID = documentProc, Rect bounds = {40, 40, 140, 200},
                 bool visible = true, WindowPtr behind = InFront(), bool goAway = true);
  // The window of an update or activate event: its message holds the
  // WindowPtr's low 32 bits.
  WindowPtr EventWindow(const EventRecord& e);
  // Every event GetNextEvent returns for mask until kQuietPasses null ones;
  // update events are answered with BeginUpdate and EndUpdate, and with the
  // whole port painted black between them when paint is true.
  std::vector<EventRecord> Drain(EventMask mask = everyEvent, bool paint = false);
  // Lets Windows deliver what it has queued (paints, activation).
  void Pump();
  // Front to back: the WindowList, and the library's windows in Win32 Z-order
  // (this process's owned pop-ups, the main window's children, MDI children).
  std::vector<WindowPtr> ListOrder();
  std::vector<WindowPtr> Win32Order();
  // The client area in the coordinates bounds are given in: the parent's
  // client area (the main window's for its pop-ups, the screen's for others).
  RECT ClientInParent(WindowPtr w);
  // The colour Windows holds at a point of the window's client area.
  COLORREF Pixel(WindowPtr w, int h, int v);
  // Runs the steps one per timer tick while the modal loop that the posted
  // input starts runs (Windows' move and size loops take input only then).
  void DuringModalLoop(std::vector<std::function<void()>> steps);
  // The next mouseDown, as the application's event loop would get it.
  bool NextMouseDown(EventRecord* e);
  // The next mouseDown, which FindWindow must decode as this part of w;
  // its point.
  Point ExpectMouseDown(SInt16 part, WindowPtr w, const std::string& where = "");
  Footprint Now();
  // Other programs (tests running beside these) take the activation now and
  // then, which deactivates the front window as the user's click on their
  // window would. ForeignActivations counts the times since SetUp;
  // TakeBackActivation gives the activation back to the front window, as a
  // click on it would, and says whether it had to.
  int ForeignActivations();
  bool TakeBackActivation();

  HWND mdiClient = nullptr;
  HHOOK activationHook = nullptr;
};

// A frame window with an MDI client, in the session's MDI mode.
class MdiWindowTest : public WindowTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagMDI; }
  void FillRecord(KWESessionRecord& r) override;
};

// The main window moved out of the way of other programs' windows (whose
// main windows stand at the top left), so that real clicks land on it and
// their windows never restack its pop-ups: Wine's X11 driver raises a
// top-level window that X exposes over the windows its exposed area meets.
// These run one at a time. (Not HWND_TOPMOST: Wine then leaves an owned
// pop-up that is raised with HWND_TOP where it was.)
template <class Base>
class OnTop : public Base {
 protected:
  void SetUp() override {
    Base::SetUp();
    SetWindowPos(this->mainWindow, HWND_TOP, 560, 400, 420, 330, SWP_SHOWWINDOW);
    this->Pump();
  }
};
using WindowsOnTop = OnTop<WindowTest>;
using MdiWindowsOnTop = OnTop<MdiWindowTest>;

}  // namespace kwe_test
