// A session with InitDialogs done and a resource file of the test's own
// (written from the resource builder's text form into a temporary file),
// with helpers that read back what USER holds for a dialog's children and
// that drive a modal call with posted input.
#pragma once
#include <functional>
#include <string>
#include <vector>

#include "Dialogs.h"
#include "windows/windows_fixture.h"

namespace kwe_test {

inline const UInt8* PStr(const char* text) { return reinterpret_cast<const UInt8*>(text); }
std::string AsString(const UInt8* pstring);

struct Child {
  std::string cls;  // lower case
  int id;
  RECT place;  // in the dialog's client area
  std::string text;
  DWORD style;
};
std::vector<Child> ChildrenOf(HWND parent);
std::string Show(const RECT& r);
std::string Show(const Rect& r);

inline DialogPeek PeekDialog(DialogPtr d) { return reinterpret_cast<DialogPeek>(d); }
HWND HwndOfDialog(DialogPtr d);
HWND ItemChild(DialogPtr d, int item);

// USER's windows and the heap's bytes as they were; GDI's objects within a
// few that Wine's own caches take now and then (a leak per dialog would
// show hundreds over the cycles the tests run).
::testing::AssertionResult Flat(const Footprint& before, const Footprint& after);

class DialogTest : public WindowTest {
 protected:
  void SetUp() override;
  void TearDown() override;
  // Opens a resource file built from the text form; fails the test on a
  // mistake in it.
  void Resources(const std::string& description);
  // The application's loop: ModalDialog again until it answers an item of
  // stop; every answer is kept in hits.
  SInt16 RunModal(std::vector<std::function<void()>> steps, ModalFilterProcPtr filter = nullptr,
                  std::vector<SInt16> stop = {1, 2});
  std::vector<SInt16> hits;

  std::string file;
  SInt16 refNum = 0;
};

}  // namespace kwe_test
