// A session with InitGraf and InitWindows done and the host's main window
// shown, as a ported application starts; helpers to make windows and read
// back what USER holds.
#pragma once
#include <vector>

#include "Events.h"
#include "KWEWindows.h"
#include "MacWindows.h"
#include "support/test_host.h"

namespace kwe_test {

class WindowTest : public SessionTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  // A window with these bounds and procID, in front (behind -1) and visible.
  WindowPtr Make(SInt16 procID = documentProc, Rect bounds = {40, 40, 140, 200},
                 bool visible = true, WindowPtr behind = reinterpret_cast<WindowPtr>(-1),
                 bool goAway = true);
  // The window of an update or activate event: its message holds the
  // WindowPtr's low 32 bits.
  WindowPtr EventWindow(const EventRecord& e);
  // Every event GetNextEvent returns for mask until a null one; update
  // events are answered with BeginUpdate and EndUpdate.
  std::vector<EventRecord> Drain(EventMask mask = everyEvent);
  // Lets Windows deliver what it has queued (paints, activation).
  void Pump();
};

}  // namespace kwe_test
