// A host's main window as a ported application's shell writes it: its window
// procedure forwards mouse, key and command messages to the library's
// translators. The fixture starts a session around it.
#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "Events.h"
#include "KWEEvents.h"
#include "KWEHostGlobals.h"
#include "support/diagnostic_capture.h"

namespace kwe_test {

// What the forwarding window procedure saw besides the translated messages.
struct HostWindowLog {
  std::vector<WPARAM> commands;  // WM_COMMAND wParams
  int userMessages = 0;          // WM_USER messages dispatched
};
HostWindowLog& WindowLog();

// Called for WM_USER + 1 inside the dispatch, when set.
extern void (*g_onUserMessage)();

class EventTest : public ::testing::Test {
 protected:
  virtual UInt32 SessionFlags() const { return 0; }
  virtual HACCEL Accelerators() { return nullptr; }
  void SetUp() override;
  void TearDown() override;

  // Every event GetNextEvent returns now, until a null event.
  std::vector<EventRecord> DrainEvents(EventMask mask = everyEvent);
  // The window's client point (x, y) in screen coordinates, as a Toolbox Point.
  Point GlobalPoint(int x, int y) const;
  // Sets the thread's key state: each listed virtual key down.
  static void HoldKeys(std::initializer_list<int> virtualKeys);

  KWELowMemoryGlobals vars{};
  HWND window = nullptr;
  DiagnosticCapture capture;
};

}  // namespace kwe_test
