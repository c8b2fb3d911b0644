#include "menus/menus_fixture.h"

#include <cstdio>
#include <cstring>

#include "KWEEvents.h"
#include "MacWindows.h"
#include "Quickdraw.h"
#include "Resources.h"
#include "support/resource_image_file.h"

namespace kwe_test {
namespace {

WNDPROC g_previous = nullptr;

// The host's main window procedure: the menu messages go to the library.
LRESULT CALLBACK MenuHostProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  switch (msg) {
    case WM_COMMAND: KWE_EventCommand(w, msg, wParam, reinterpret_cast<HWND>(lParam)); return 0;
    case WM_INITMENUPOPUP: KWE_InitMenuMsg(reinterpret_cast<HMENU>(wParam)); return 0;
    case WM_MENUSELECT: KWE_MenuSelect(w, msg, wParam, lParam); break;
    case WM_ENTERIDLE: KWE_EnterIdle(w, msg, wParam, lParam); break;
    case WM_MEASUREITEM:
    case WM_DRAWITEM:
      if (wParam == 0) return KWE_MenuUserItem(w, msg, wParam, lParam);
      break;
    default: break;
  }
  return CallWindowProcA(g_previous, w, msg, wParam, lParam);
}

}  // namespace

std::basic_string<UInt8> P(const std::string& text) {
  std::basic_string<UInt8> p(1, UInt8(text.size()));
  p.append(text.begin(), text.end());
  return p;
}

Win32Item Win32ItemAt(HMENU menu, int position) {
  char text[256] = {};
  GetMenuStringA(menu, UINT(position), text, sizeof text, MF_BYPOSITION);
  return Win32Item{text, GetMenuState(menu, UINT(position), MF_BYPOSITION),
                   GetMenuItemID(menu, position)};
}

void MenuTest::SetUp() {
  WindowTest::SetUp();
  g_previous = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(mainWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(MenuHostProc)));
  SetWindowPos(mainWindow, HWND_TOP, 40, 40, 600, 400, SWP_SHOWWINDOW);
  InitMenus();
  Pump();
}

void MenuTest::TearDown() {
  if (resourceRefNum > 0) CloseResFile(resourceRefNum);
  if (!resourceFile.empty()) DeleteFileA(resourceFile.c_str());
  WindowTest::TearDown();
}

void MenuTest::UseResources(const std::vector<resource_builder::Resource>& resources) {
  OpenResourceImage(resource_builder::BuildResourceImage(resources), "kwe_menus_", &resourceFile,
                    &resourceRefNum);
}

HMENU MenuTest::BarPopup(int toolboxIndex) {
  HMENU bar = GetMenu(mainWindow);
  int seen = 0;
  for (int i = 0, n = GetMenuItemCount(bar); i < n; ++i)
    if (HMENU sub = GetSubMenu(bar, i)) {
      if (seen++ == toolboxIndex) return sub;
    }
  return nullptr;
}

std::vector<std::function<void()>> MenuTest::Keys(const std::vector<UINT>& keys) {
  std::vector<std::function<void()>> steps;
  for (UINT vk : keys)
    steps.push_back([this, vk] { PostKey(GetFocus() ? GetFocus() : mainWindow, vk); });
  return steps;
}

std::vector<std::string> MenuTest::BarTitles() {
  std::vector<std::string> titles;
  HMENU bar = GetMenu(mainWindow);
  for (int i = 0, n = GetMenuItemCount(bar); i < n; ++i) titles.push_back(Win32ItemAt(bar, i).text);
  return titles;
}

}  // namespace kwe_test
