// A session whose main window forwards the menu messages to the library as
// a host shell does, with InitMenus done after the windows' session; 'MENU'
// and 'MBAR' resources in a file of the test's own; what USER holds of a
// Win32 menu; input played while a modal menu loop runs.
#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "KWEMenus.h"
#include "Menus.h"
#include "support/menu_resources.h"
#include "support/timed_steps.h"
#include "windows/windows_fixture.h"

namespace kwe_test {

// A Pascal string of text.
std::basic_string<UInt8> P(const std::string& text);

// What USER holds of one item of a Win32 menu, by position.
struct Win32Item {
  std::string text;
  UINT state;  // GetMenuState
  UINT id;     // GetMenuItemID (-1 for a submenu)
};
Win32Item Win32ItemAt(HMENU menu, int position);

class MenuTest : public WindowTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Opens a resource file holding these resources (closed at the end).
  void UseResources(const std::vector<resource_builder::Resource>& resources);
  // The Win32 popup of bar position (Toolbox menus from 0, the Apple menu
  // left out in merged mode).
  HMENU BarPopup(int toolboxIndex);
  // Runs the steps one per timer tick, the first after delay milliseconds,
  // while whatever call follows runs its modal loop; Finish() stops them.
  void DuringModal(std::vector<std::function<void()>> steps, UINT delay = 30);
  void Finish();
  // A key pressed and released, as the keyboard posts it to the focus.
  void PostKey(UINT vk);

  std::string resourceFile;
  SInt16 resourceRefNum = -1;

 private:
  std::unique_ptr<TimedSteps> steps_;
};

}  // namespace kwe_test
