// The Menu Manager against the Win32 calls under it, with a visible main
// window whose bar the menus go into:
//   GetNewMBar of a six-menu, sixty-item bar from a resource file, then
//     SetMenuBar and DrawMenuBar, against building the same bar (titles,
//     items and their command-key texts) with CreateMenu, AppendMenuA,
//     SetMenu and DrawMenuBar;
//   MenuKey over every command key of that bar, against
//     TranslateAcceleratorA of the same key's WM_KEYDOWN on an accelerator
//     table of the sixty keys (for a window without a bar, so that Windows
//     does not open the menu holding the command first).
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "Memory.h"
#include "Menus.h"
#include "OSUtils.h"
#include "Quickdraw.h"
#include "Resources.h"
#include "bench_support.h"
#include "host_window_session.h"
#include "resource_builder/resource_image.h"

namespace {

constexpr int kRounds = 41;
constexpr int kBars = 20;
constexpr int kMenus = 6;
constexpr int kItems = 10;
constexpr SInt16 kFirstMenu = 128;

std::string ItemText(int menu, int item) { return "Item " + std::to_string(menu * kItems + item); }
char KeyOf(int menu, int item) {
  int n = menu * kItems + item;
  static const char kPunctuation[] = "!\"#$%&'()*+,-./:;<=>?@[]";
  return char(n < 26 ? 'A' + n : n < 36 ? '0' + (n - 26) : kPunctuation[n - 36]);
}

std::string ResourceFile() {
  using resource_builder::Bytes;
  std::vector<resource_builder::Resource> resources;
  Bytes mbar = {0, UInt8(kMenus)};
  for (int m = 0; m < kMenus; ++m) {
    SInt16 id = SInt16(kFirstMenu + m);
    mbar.push_back(UInt8(id >> 8));
    mbar.push_back(UInt8(id));
    std::string title = "Menu" + std::to_string(m);
    Bytes b = {UInt8(id >> 8), UInt8(id), 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF};
    b.push_back(UInt8(title.size()));
    b.insert(b.end(), title.begin(), title.end());
    for (int i = 0; i < kItems; ++i) {
      std::string text = ItemText(m, i);
      b.push_back(UInt8(text.size()));
      b.insert(b.end(), text.begin(), text.end());
      b.insert(b.end(), {0, UInt8(KeyOf(m, i)), 0, 0});
    }
    b.push_back(0);
    resources.push_back(resource_builder::MakeResource("MENU", id, b));
  }
  resources.push_back(resource_builder::MakeResource("MBAR", 128, mbar));
  auto image = resource_builder::BuildResourceImage(resources);
  char dir[MAX_PATH];
  GetTempPathA(MAX_PATH, dir);
  std::string path = std::string(dir) + "kwe_menu_bench";
  FILE* f = std::fopen(path.c_str(), "wb");
  std::fwrite(image.data(), 1, image.size(), f);
  std::fclose(f);
  return path;
}

void BuildBars(HWND main) {
  kwe_bench::CompareByRound(
      "GetNewMBar+SetMenuBar+DrawMenuBar vs Create/AppendMenu", kRounds, kBars, 1e6, "us",
      [&] {
        for (int n = 0; n < kBars; ++n) {
          Handle list = GetNewMBar(128);
          SetMenuBar(list);
          DisposeHandle(list);
          DrawMenuBar();
        }
      },
      [&] {
        for (int n = 0; n < kBars; ++n) {
          HMENU bar = CreateMenu();
          for (int m = 0; m < kMenus; ++m) {
            HMENU popup = CreateMenu();
            for (int i = 0; i < kItems; ++i) {
              std::string text = ItemText(m, i) + "\tCtrl+" + KeyOf(m, i);
              AppendMenuA(popup, MF_STRING, UINT_PTR(((m + 1) << 8) | i), text.c_str());
            }
            AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup),
                        ("&Menu" + std::to_string(m)).c_str());
          }
          HMENU old = GetMenu(main);
          SetMenu(main, bar);
          if (old) DestroyMenu(old);
          DrawMenuBar(main);
        }
      });
}

void CommandKeys(HWND main) {
  std::vector<ACCEL> table;
  for (int m = 0; m < kMenus; ++m)
    for (int i = 0; i < kItems; ++i) {
      char key = KeyOf(m, i);
      WORD vk = LOBYTE(VkKeyScanA(key));
      table.push_back(ACCEL{FVIRTKEY, vk, WORD(((m + 1) << 8) | i)});
    }
  HACCEL accelerators = CreateAcceleratorTableA(table.data(), int(table.size()));
  volatile SInt32 sink = 0;
  kwe_bench::CompareByRound(
      "MenuKey vs TranslateAcceleratorA", kRounds, kMenus * kItems, 1e6, "us",
      [&] {
        for (int m = 0; m < kMenus; ++m)
          for (int i = 0; i < kItems; ++i) sink = sink + MenuKey(KeyOf(m, i));
      },
      [&] {
        for (const ACCEL& a : table) {
          MSG msg{main, WM_KEYDOWN, a.key, 1, 0, {0, 0}};
          sink = sink + TranslateAcceleratorA(main, accelerators, &msg);
        }
      });
  DestroyAcceleratorTable(accelerators);
}

}  // namespace

int main() {
  kwe_bench::HostWindowSession session("Menu bench");
  HWND main = session.main;
  HINSTANCE instance = GetModuleHandleA(nullptr);
  HWND raw = CreateWindowA("KWEMainWndClass", "Raw menus", WS_OVERLAPPEDWINDOW, 0, 520, 900, 200,
                           nullptr, nullptr, instance, nullptr);
  ShowWindow(raw, SW_SHOWNORMAL);
  InitMenus();
  std::string file = ResourceFile();
  Str255 name{UInt8(file.size())};
  file.copy(reinterpret_cast<char*>(name + 1), file.size());
  SInt16 refNum = OpenResFile(name);
  SetResLoad(true);
  // The merged Apple menu would keep the first menu out of the bar.
  KWE_SystemValue(1, 13, 0);

  // Both sides do the same work: the library's bar holds every menu and
  // MenuKey finds every key.
  Handle probe = GetNewMBar(128);
  SetMenuBar(probe);
  DisposeHandle(probe);
  DrawMenuBar();
  int shown = GetMenuItemCount(GetMenu(main)), found = 0;
  for (int m = 0; m < kMenus; ++m)
    for (int i = 0; i < kItems; ++i)
      found += MenuKey(KeyOf(m, i)) == (((kFirstMenu + m) << 16) | (i + 1));
  if (shown != kMenus || found != kMenus * kItems) {
    std::printf("menu bench: %d menus shown, %d keys found\n", shown, found);
    return 1;
  }

  BuildBars(raw);
  // A window without a bar: Windows then only looks the key up and sends
  // the command, without first opening the menu that holds it.
  HWND keys = CreateWindowA("KWEMainWndClass", "Keys", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr,
                            nullptr, instance, nullptr);
  CommandKeys(keys);
  DestroyWindow(keys);

  CloseResFile(refNum);
  DeleteFileA(file.c_str());
  DestroyWindow(raw);
  return 0;
}
