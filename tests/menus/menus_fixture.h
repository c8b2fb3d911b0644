// A session whose main window forwards the menu messages to the library as
// a host shell does, with InitMenus done after the windows' session; 'MENU'
// and 'MBAR' resources in a file of the test's own; what USER holds of a
// Win32 menu; input played while a modal menu loop runs.
#pragma once
#include <functional>
#include <string>
#include <vector>

#include "KWEMenus.h"
#include "Menus.h"
#include "support/menu_resources.h"
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
  // Steps that press and release these keys, as the keyboard posts them to
  // the focus.
  std::vector<std::function<void()>> Keys(const std::vector<UINT>& keys);
  // The titles of the Win32 bar, left to right.
  std::vector<std::string> BarTitles();

  std::string resourceFile;
  SInt16 resourceRefNum = -1;
};

}  // namespace kwe_test
