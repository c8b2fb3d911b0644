// The Dialog Manager against the Win32 dialog calls under it:
//   GetNewDialog of a 20-item 'DITL' + DisposeDialog against
//     CreateDialogIndirectParamA of the same items in an in-memory template
//     + DestroyWindow;
//   a ModalDialog round trip for one posted key (a character for the edit
//     item, which answers with that item) against the same key through
//     IsDialogMessageA in a raw modal loop that ends when the edit control
//     reports the change.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Dialogs.h"
#include "KWEWindows.h"
#include "Resources.h"
#include "bench_support.h"
#include "host_window_session.h"
#include "resource_builder/resource_description.h"
#include "resource_builder/resource_image.h"

namespace {

constexpr int kRounds = 21;
constexpr int kDialogs = 10;
constexpr int kKeys = 20;

struct Item {
  int top, left, bottom, right, type;
  const char* text;
};
// Two buttons, six check boxes, two radio buttons, six static texts and
// four edit items.
std::vector<Item> Items() {
  std::vector<Item> items = {{250, 300, 270, 380, 4, "OK"}, {250, 200, 270, 280, 4, "Cancel"}};
  for (int i = 0; i < 6; ++i) items.push_back({10 + 20 * i, 10, 26 + 20 * i, 150, 5, "Option"});
  for (int i = 0; i < 2; ++i) items.push_back({130 + 20 * i, 10, 146 + 20 * i, 150, 6, "Choice"});
  for (int i = 0; i < 6; ++i) items.push_back({10 + 20 * i, 170, 26 + 20 * i, 260, 8, "Label"});
  for (int i = 0; i < 4; ++i) items.push_back({10 + 20 * i, 270, 26 + 20 * i, 390, 16, "Text"});
  return items;
}

std::string Description() {
  std::vector<Item> items = Items();
  std::string d =
      "resource 'DLOG' 128\n  words 60 60 340 460 1\n  hex 00 00 00 00\n  longs 0\n  words 128\n"
      "  pstring \"Bench\"\nresource 'DITL' 128\n  words " +
      std::to_string(items.size() - 1) + "\n";
  for (const Item& i : items) {
    char line[160];
    std::snprintf(line, sizeof line,
                  "  longs 0\n  words %d %d %d %d\n  hex %02X\n  pstring \"%s\"\n", i.top, i.left,
                  i.bottom, i.right, i.type, i.text);
    d += line;
    if (std::strlen(i.text) % 2) d += "  hex 00\n";
  }
  return d;
}

void OpenResources() {
  std::vector<resource_builder::Resource> list;
  std::string error;
  resource_builder::ParseResourceDescription(Description(), list, error);
  auto image = resource_builder::BuildResourceImage(list);
  char dir[MAX_PATH];
  GetTempPathA(MAX_PATH, dir);
  std::string file = std::string(dir) + "kwe_dialog_bench.rsr";
  FILE* f = std::fopen(file.c_str(), "wb");
  std::fwrite(image.data(), 1, image.size(), f);
  std::fclose(f);
  Str255 name{UInt8(file.size())};
  std::memcpy(name + 1, file.data(), file.size());
  OpenResFile(name);
  SetResLoad(true);
}

// The same items as an in-memory dialog template (dialog units are pixels
// here only roughly; the work is the same: one child per item).
std::vector<WORD> Template() {
  std::vector<WORD> t(sizeof(DLGTEMPLATE) / 2, 0);
  auto* header = reinterpret_cast<DLGTEMPLATE*>(t.data());
  header->style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT;
  header->cdit = WORD(Items().size());
  header->cx = 266;
  header->cy = 186;
  t.insert(t.end(), {0, 0, 'B', 'e', 'n', 'c', 'h', 0, 8});
  for (char c : std::string("MS Sans Serif")) t.push_back(WORD(c));
  t.push_back(0);
  int id = 1;
  for (const Item& i : Items()) {
    if (t.size() % 2) t.push_back(0);  // DWORD alignment
    DLGITEMTEMPLATE item{};
    item.style = WS_CHILD | WS_VISIBLE;
    WORD cls = 0x0080;
    if (i.type == 4) item.style |= BS_PUSHBUTTON | WS_TABSTOP;
    if (i.type == 5) item.style |= BS_CHECKBOX | WS_TABSTOP;
    if (i.type == 6) item.style |= BS_RADIOBUTTON;
    if (i.type == 8) cls = 0x0082;
    if (i.type == 16) {
      cls = 0x0081;
      item.style |= WS_BORDER | ES_AUTOHSCROLL | WS_TABSTOP;
    }
    item.x = short(i.left * 2 / 3);
    item.y = short(i.top * 2 / 3);
    item.cx = short((i.right - i.left) * 2 / 3);
    item.cy = short((i.bottom - i.top) * 2 / 3);
    item.id = WORD(id++);
    const WORD* raw = reinterpret_cast<const WORD*>(&item);
    t.insert(t.end(), raw, raw + sizeof item / 2);
    t.insert(t.end(), {0xFFFF, cls});
    for (const char* c = i.text; *c; ++c) t.push_back(WORD(*c));
    t.insert(t.end(), {0, 0});
  }
  return t;
}

bool g_changed = false;
INT_PTR CALLBACK RawDialogProc(HWND, UINT msg, WPARAM wParam, LPARAM) {
  if (msg == WM_COMMAND && HIWORD(wParam) == EN_CHANGE) g_changed = true;
  return msg == WM_INITDIALOG;
}

void Pump() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
}

void MakeAndDispose(HWND main) {
  std::vector<WORD> t = Template();
  auto* templ = reinterpret_cast<const DLGTEMPLATE*>(t.data());
  kwe_bench::CompareByRound(
      "GetNewDialog+DisposeDialog vs CreateDialogIndirect", kRounds, kDialogs, 1e3, "ms",
      [] {
        for (int i = 0; i < kDialogs; ++i)
          DisposeDialog(GetNewDialog(128, nullptr, reinterpret_cast<WindowPtr>(intptr_t(-1))));
      },
      [&] {
        for (int i = 0; i < kDialogs; ++i)
          DestroyWindow(
              CreateDialogIndirectParamA(GetModuleHandleA(nullptr), templ, main, RawDialogProc, 0));
      });
  Pump();
}

void KeyRoundTrip(HWND main) {
  DialogPtr d = GetNewDialog(128, nullptr, reinterpret_cast<WindowPtr>(intptr_t(-1)));
  ShowWindo(d);
  SelectWindow(d);
  HWND dialog = KWE_GethWnd(d);
  std::vector<WORD> t = Template();
  HWND raw = CreateDialogIndirectParamA(GetModuleHandleA(nullptr),
                                        reinterpret_cast<const DLGTEMPLATE*>(t.data()), main,
                                        RawDialogProc, 0);
  ShowWindow(raw, SW_SHOWNA);
  HWND rawEdit = GetDlgItem(raw, 17);
  Pump();
  LPARAM a = LPARAM(1 | (MapVirtualKeyA('A', 0) << 16));
  kwe_bench::CompareByRound(
      "ModalDialog key round trip vs IsDialogMessage loop", kRounds, kKeys, 1e6, "us",
      [&] {
        for (int i = 0; i < kKeys; ++i) {
          PostMessageA(dialog, WM_KEYDOWN, 'A', a);
          SInt16 hit = 0;
          ModalDialog(nullptr, &hit);
        }
      },
      [&] {
        for (int i = 0; i < kKeys; ++i) {
          PostMessageA(rawEdit, WM_KEYDOWN, 'A', a);
          g_changed = false;
          MSG msg;
          EnableWindow(main, FALSE);
          while (!g_changed && GetMessageA(&msg, nullptr, 0, 0)) {
            if (IsDialogMessageA(raw, &msg)) continue;
            TranslateMessage(&msg);
            DispatchMessageA(&msg);
          }
          EnableWindow(main, TRUE);
        }
      });
  DestroyWindow(raw);
  DisposeDialog(d);
}

}  // namespace

int main() {
  kwe_bench::HostWindowSession session("Dialog bench");
  InitDialogs(nullptr);
  OpenResources();
  // A bench that measures nothing must not pass for one.
  DialogPtr probe = GetNewDialog(128, nullptr, reinterpret_cast<WindowPtr>(intptr_t(-1)));
  if (!probe || CountDITL(probe) != 20) {
    std::printf("the bench's dialog could not be made\n");
    return 1;
  }
  DisposeDialog(probe);
  MakeAndDispose(session.main);
  KeyRoundTrip(session.main);
  return 0;
}
