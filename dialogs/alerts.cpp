// Alerts: dialogs made from 'ALRT' and its item list, run modally, with the
// Toolbox's stages (the same alert shown again escalates, each stage
// deciding whether it is shown, which button is the default and how many
// beeps it makes), the system's stop, note and caution icons, a lone button
// centred and OK placed to the left of Cancel.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "Controls.h"
#include "Memory.h"
#include "OSUtils.h"
#include "Resources.h"
#include "controls/control_manager.h"
#include "dialogs/dialog_manager.h"
#include "frame/host_procedures.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "frame/system_values.h"
#include "memory/character_conversion.h"

namespace kwe::dialogs {
namespace {

constexpr ResType kAlertType = 0x414C5254;     // 'ALRT'
constexpr ResType kItemListType = 0x4449544C;  // 'DITL'
constexpr size_t kAlertSize = 12;
constexpr SInt16 kSysValueAlertProcId = 12;
constexpr UINT kAlertTitleString = 2176;
constexpr int kLoneButtonWidth = 60;
constexpr Rect kIconRect{20, 10, 52, 42};
const LPCSTR kIconIds[3] = {IDI_HAND, IDI_ASTERISK, IDI_QUESTION};
const auto kStandardSound = reinterpret_cast<SoundProcPtr>(intptr_t(1));

struct Stage {
  bool secondIsDefault, shown;
  int sound;
};

// Four bits per stage, the first stage in the highest ones.
Stage StageOf(UInt16 stages, int stage) {
  int nibble = (stages >> (4 * (3 - std::min(stage, 3)))) & 0xF;
  return Stage{(nibble & 1) != 0, (nibble & 2) != 0, nibble >> 2};
}

// The item list with the icon item appended; its handle holds the icon's
// Windows handle (32 significant bits in every build).
Handle ItemsWithIcon(SInt16 ditlId, int kind, Handle* iconHandle) {
  Handle items = CopyOfItemList(ditlId);
  *iconHandle = nullptr;
  if (!items || kind < 0 || kind > 2) return items;
  Handle icon = NewHandle(4);
  Size size = GetHandleSize(items);
  if (!icon) return items;
  SetHandleSize(items, size + Size(kItemHeaderSize + 2));
  if (MemError() != noErr) {
    DisposeHandle(icon);
    return items;
  }
  SInt32 windowsIcon = SInt32(reinterpret_cast<intptr_t>(State().icons[kind]));
  std::memcpy(*icon, &windowsIcon, sizeof windowsIcon);
  UInt8* p = reinterpret_cast<UInt8*>(*items) + size;
  std::memset(p, 0, kItemHeaderSize + 2);
  std::memcpy(p + 4, &kIconRect, sizeof kIconRect);
  p[12] = kIconItem | kDisabledBit;
  p[13] = 2;
  SInt16 kindWord = SInt16(kind);
  std::memcpy(p + 14, &kindWord, sizeof kindWord);
  SInt16 count;
  std::memcpy(&count, *items, sizeof count);
  ++count;
  std::memcpy(*items, &count, sizeof count);
  *iconHandle = icon;
  return items;
}

Rect ItemRect(DialogPtr d, int item) {
  ItemView v;
  return ItemAt(d, item, &v) ? v.rect : Rect{0, 0, 0, 0};
}

bool IsButton(DialogPtr d, int item) {
  ItemView v;
  return ItemAt(d, item, &v) && TypeOf(v.type) == kButtonItem && ItemWindow(d, item);
}

void PlaceButton(DialogPtr d, int item, int left, int top) {
  HWND child = ItemWindow(d, item);
  if (ControlHandle c = child ? controls::ControlOfChild(child) : nullptr)
    MoveControl(c, SInt16(left), SInt16(top));
  else if (child)
    SetWindowPos(child, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void SwapPlaces(DialogPtr d, int a, int b) {
  Rect ra = ItemRect(d, a), rb = ItemRect(d, b);
  if (ra.top != rb.top || ra.left <= rb.left) return;
  PlaceButton(d, a, rb.left, rb.top);
  PlaceButton(d, b, ra.left, ra.top);
  SetItemRect(d, a, Rect{ra.top, rb.left, ra.bottom, SInt16(rb.left + (ra.right - ra.left))});
  SetItemRect(d, b, Rect{rb.top, ra.left, rb.bottom, SInt16(ra.left + (rb.right - rb.left))});
}

void ArrangeButtons(DialogPtr d) {
  int buttons = 0;
  for (int item = 1; item <= 3; ++item) buttons += IsButton(d, item);
  if (buttons == 1 && IsButton(d, 1)) {
    Rect r = ItemRect(d, 1);
    int width = r.right - r.left;
    int left = (d->portRect.right - d->portRect.left - width) / 2;
    PlaceButton(d, 1, left, r.top);
    SetItemRect(d, 1, Rect{r.top, SInt16(left), r.bottom, SInt16(left + kLoneButtonWidth)});
  } else if (buttons == 2) {
    SwapPlaces(d, 1, 2);
  } else if (buttons == 3) {
    SwapPlaces(d, 1, 3);
  }
}

HWND TopLevelWithFocus() {
  HWND w = GetFocus();
  while (w && (GetWindowLongA(w, GWL_STYLE) & WS_CHILD)) w = GetParent(w);
  return w;
}

SInt16 RunAlert(SInt16 alertID, ModalFilterProcPtr filterProc, int kind) {
  ManagerState& st = State();
  if (alertID != st.lastAlert) {
    st.alertStage = 0;
    st.lastAlert = alertID;
  } else if (st.alertStage < 3) {
    ++st.alertStage;
  }
  Handle alrt = GetResource(kAlertType, alertID);
  if (!alrt || !*alrt || size_t(GetHandleSize(alrt)) < kAlertSize) return -1;
  Rect bounds;
  SInt16 itemsID;
  UInt16 stages;
  std::memcpy(&bounds, *alrt, sizeof bounds);
  std::memcpy(&itemsID, *alrt + 8, sizeof itemsID);
  std::memcpy(&stages, *alrt + 10, sizeof stages);
  Stage stage = StageOf(stages, st.alertStage);
  if (!stage.shown) {
    ReleaseResource(alrt);
    return -1;
  }
  HWND focus = GetFocus(), top = TopLevelWithFocus();
  bool disabled = top && IsWindowEnabled(top);
  Handle icon = nullptr;
  Handle items = ItemsWithIcon(itemsID, kind, &icon);
  if (!items) {
    ReleaseResource(alrt);
    return -1;
  }
  if (disabled) EnableWindow(top, FALSE);
  char ansiTitle[64] = "";
  LoadStringA(TheSession().instance, kAlertTitleString, ansiTitle, sizeof ansiTitle);
  Str255 title;
  title[0] = UInt8(std::strlen(ansiTitle));
  text::AnsiToMacBytes(reinterpret_cast<const UInt8*>(ansiTitle), title + 1, title[0]);
  SInt32 procID = ReadSystemValue(kSysValueAlertProcId);
  st.alertIcon = icon;
  DialogPtr d = NewDialogFromList(&bounds, title, SInt16(procID), items, itemsID);
  // The item's build takes the icon handle; one left over was not used.
  if (st.alertIcon) DisposeHandle(st.alertIcon);
  st.alertIcon = nullptr;
  SInt16 hit = -1;
  if (d) {
    ArrangeButtons(d);
    Dlg(d)->aDefItem = stage.secondIsDefault ? 2 : 1;
    MoveDefaultOutline(d, Dlg(d)->aDefItem);
    ShowWindo(d);
    SelectWindow(d);
    DialogPtr previous = st.modalDialog;
    st.modalDialog = d;
    UpdateWindow(HwndOf(d));
    st.modalDialog = previous;
    PlaySound(SInt16(stage.sound));
    ModalDialog(filterProc, &hit);
    DisposeDialog(d);
  } else {
    DisposeHandle(items);
  }
  if (disabled) EnableWindow(top, TRUE);
  if (focus && IsWindow(focus)) SetFocus(focus);
  ReleaseResource(alrt);
  return hit;
}

}  // namespace

void PlaySound(SInt16 n) {
  ManagerState& st = State();
  if (st.silent) return;
  if (st.soundProc) {
    st.soundProc(n);
    return;
  }
  for (int i = 0; i < n && n <= 3; ++i) SysBeep(1);
}

void ResetErrorSound() { ErrorSound(kStandardSound); }

}  // namespace kwe::dialogs

using namespace kwe;
using namespace kwe::dialogs;

KWE_API void KWE_CALL InitDialogs(ResumeProcPtr resumeProc) {
  ManagerState& st = State();
  lowmem::At<ProcPtr>(lowmem::Slot::ResumeProc) = reinterpret_cast<ProcPtr>(resumeProc);
  ErrorSound(kStandardSound);
  for (auto& p : st.params) p[0] = 0;
  for (int k = 0; k < 3; ++k) st.icons[k] = LoadIconA(nullptr, kIconIds[k]);
  st.baseUnits = int(GetDialogBaseUnits());
  // Entries of dialogs an earlier session left open went with its heap.
  for (auto& e : st.table)
    if (e->dialog && !IsLibraryDialog(e->dialog)) *e = DialogInfo{};
  for (HWND& caption : st.captions)
    if (caption && !IsWindow(caption)) caption = nullptr;
  st.initialised = true;
}

KWE_API void KWE_CALL ErrorSound(SoundProcPtr soundProc) {
  ManagerState& st = State();
  SoundProcPtr current = st.silent ? nullptr : st.soundProc ? st.soundProc : kStandardSound;
  if (soundProc == current && soundProc != nullptr && soundProc != kStandardSound) return;
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(st.soundProc));
  st.soundProc = nullptr;
  st.silent = soundProc == nullptr;
  if (soundProc && soundProc != kStandardSound)
    st.soundProc =
        reinterpret_cast<SoundProcPtr>(WrapHostProcedure(reinterpret_cast<ProcPtr>(soundProc)));
}

KWE_API SInt16 KWE_CALL Alert(SInt16 alertID, ModalFilterProcPtr filterProc) {
  return RunAlert(alertID, filterProc, -1);
}
KWE_API SInt16 KWE_CALL StopAlert(SInt16 alertID, ModalFilterProcPtr filterProc) {
  return RunAlert(alertID, filterProc, stopIcon);
}
KWE_API SInt16 KWE_CALL NoteAlert(SInt16 alertID, ModalFilterProcPtr filterProc) {
  return RunAlert(alertID, filterProc, noteIcon);
}
KWE_API SInt16 KWE_CALL CautionAlert(SInt16 alertID, ModalFilterProcPtr filterProc) {
  return RunAlert(alertID, filterProc, cautionIcon);
}
KWE_API SInt16 KWE_CALL GetAlertStage(void) { return State().alertStage; }
KWE_API SInt16 KWE_CALL GetAlrtStage(void) { return GetAlertStage(); }
KWE_API void KWE_CALL ResetAlertStage(void) { State().alertStage = -1; }
KWE_API void KWE_CALL ResetAlrtStage(void) { ResetAlertStage(); }
KWE_API void KWE_CALL CouldAlert(SInt16) {}
KWE_API void KWE_CALL FreeAlert(SInt16) {}
