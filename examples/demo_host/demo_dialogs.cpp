#include "demo_dialogs.h"

#include <windows.h>

#include <cstdio>

#include "Controls.h"
#include "Dialogs.h"
#include "KWEWindows.h"
#include "Menus.h"
#include "demo_lists.h"
#include "demo_main_window.h"

namespace {

constexpr SInt16 kAboutAlert = 128;
constexpr SInt16 kSettingsDialog = 300;
constexpr SInt16 kSizesMenu = 140;
enum {
  kOK = 1,
  kCancel = 2,
  kName = 4,
  kWrap = 5,
  kAutosave = 6,
  kSmall = 8,
  kMedium = 9,
  kLarge = 10,
  kPopUp = 12
};

struct Script {
  HWND dialog = nullptr;
  std::string screenshot;
  int step = 0;
  bool saved = false;
};
Script g_script;

void PostKey(HWND to, UINT vk) {
  PostMessageA(to, WM_KEYDOWN, vk, LPARAM(1 | (MapVirtualKeyA(vk, 0) << 16)));
}

// One user action per tick: type a name, tick Autosave, choose Large, pick
// the third size, save the screenshot, press Return.
void CALLBACK PlayUser(HWND, UINT, UINT_PTR, DWORD) {
  HWND d = g_script.dialog;
  if (!d) return;
  switch (g_script.step++) {
    case 0: SetDlgItemTextA(d, kName, "Ada's notes"); break;
    case 1: SendMessageA(GetDlgItem(d, kAutosave), BM_CLICK, 0, 0); break;
    case 2: SendMessageA(GetDlgItem(d, kLarge), BM_CLICK, 0, 0); break;
    case 3: SendMessageA(GetDlgItem(d, kPopUp), CB_SETCURSEL, 2, 0); break;
    case 4: g_script.saved = SaveWindowScreenshot(d, g_script.screenshot); break;
    default: PostKey(d, VK_RETURN); break;
  }
}

void CALLBACK PressReturn(HWND, UINT, UINT_PTR, DWORD) {
  if (HWND front = GetActiveWindow()) PostKey(front, VK_RETURN);
}

ControlHandle ControlOf(DialogPtr d, SInt16 item) {
  SInt16 type;
  Handle h;
  Rect r;
  GetDialogItem(d, item, &type, &h, &r);
  return reinterpret_cast<ControlHandle>(h);
}

void Toggle(DialogPtr d, SInt16 item) {
  ControlHandle c = ControlOf(d, item);
  SetControlValue(c, SInt16(!GetControlValue(c)));
}

void SelectRadio(DialogPtr d, SInt16 item) {
  for (SInt16 r = kSmall; r <= kLarge; ++r) SetControlValue(ControlOf(d, r), r == item);
}

}  // namespace

int ShowAboutAlert() {
  ParamText(reinterpret_cast<const UInt8*>("\x0CToolbox Tour"), nullptr, nullptr, nullptr);
  UINT_PTR timer = SetTimer(nullptr, 0, 400, PressReturn);
  int hit = NoteAlert(kAboutAlert, nullptr);
  KillTimer(nullptr, timer);
  return hit;
}

std::vector<std::string> RunSettingsDialog(const std::string& screenshot) {
  std::vector<std::string> lines;
  DialogPtr d = GetNewDialog(kSettingsDialog, nullptr, reinterpret_cast<WindowPtr>(intptr_t(-1)));
  if (!d) return {"The settings dialog could not be made."};
  KWE_BuildComboBox(d, kPopUp, GetMenu(kSizesMenu), 1);
  SelectRadio(d, kMedium);
  SetControlValue(ControlOf(d, kWrap), 1);
  ListHandle paper = AddPaperList(d);
  ShowWindo(d);
  SelectWindow(d);
  g_script = Script{KWE_GethWnd(d), screenshot};
  UINT_PTR timer = SetTimer(nullptr, 0, 250, PlayUser);
  SInt16 hit = 0;
  do {
    ModalDialog(nullptr, &hit);
    if (hit == kWrap || hit == kAutosave) Toggle(d, hit);
    if (hit >= kSmall && hit <= kLarge) SelectRadio(d, hit);
  } while (hit != kOK && hit != kCancel);
  KillTimer(nullptr, timer);

  Str255 name;
  SInt16 type;
  Handle h;
  Rect r;
  GetDialogItem(d, kName, &type, &h, &r);
  GetDialogItemText(h, name);
  int size = 0;
  for (SInt16 item = kSmall; item <= kLarge; ++item)
    if (GetControlValue(ControlOf(d, item))) size = item - kSmall;
  static const char* const sizes[] = {"small", "medium", "large"};
  char line[400];
  std::snprintf(line, sizeof line,
                "Settings: %s; name \"%.*s\", wrap %s, autosave %s, %s type, page size %d",
                hit == kOK ? "OK" : "Cancel", int(name[0]), reinterpret_cast<const char*>(name + 1),
                GetControlValue(ControlOf(d, kWrap)) ? "on" : "off",
                GetControlValue(ControlOf(d, kAutosave)) ? "on" : "off", sizes[size],
                int(KWE_GetComboBoxSelect(d, kPopUp)));
  lines.push_back(line);
  lines.push_back("Paper: " + TakePaperChoice(paper));
  lines.push_back(g_script.saved ? "Settings dialog saved to " + screenshot
                                 : "Could not save the settings dialog");
  g_script = Script{};
  DisposeDialog(d);
  return lines;
}
