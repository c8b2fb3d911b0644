// Item text: the Win32 child's text in the ANSI set, read and written in
// the Macintosh set; ParamText's four strings and their "^0".."^3" slots.
#include <windows.h>

#include <cctype>
#include <cstring>
#include <string>

#include "dialogs/dialog_manager.h"
#include "dialogs/edit_items.h"
#include "frame/session.h"
#include "memory/character_conversion.h"

namespace kwe::dialogs {
namespace {

// The window a text item's handle names: its child, or for a static text
// that became the caption the dialog window.
HWND TargetOf(Handle item) {
  int slot = CaptionSlot(item);
  if (slot >= 0) return State().captions[slot];
  HWND hwnd = reinterpret_cast<HWND>(item);
  return hwnd && IsWindow(hwnd) ? hwnd : nullptr;
}

bool DoublesAmpersands() { return !SessionFlag(kweFlagAmpersandAsMnemonic); }

// The mnemonic the parent dialog's private table gives the child's item.
UInt8 MnemonicOf(HWND child) {
  DialogPtr d = DialogOfHwnd(GetParent(child));
  if (!d) return 0;
  PrivateTable t = TableOf(d);
  const TableEntry* e = t.EntryOf(GetDlgCtrlID(child));
  return e ? e->mnemonic : 0;
}

void SetText(HWND target, const UInt8* text, size_t length) {
  if (IsEditChild(target)) {
    SetEditText(target, text, length);
    return;
  }
  std::string ansi;
  UInt8 mnemonic = MnemonicOf(target);
  bool marked = false;
  for (size_t i = 0; i < length; ++i) {
    UInt8 c = text::MacToAnsiCharacter(text[i]);
    if (mnemonic && !marked && std::toupper(c) == std::toupper(mnemonic)) {
      ansi.push_back('&');
      marked = true;
    }
    ansi.push_back(char(c));
    if (c == '&' && DoublesAmpersands()) ansi.push_back('&');
  }
  ++State().buildNesting;
  SendMessageA(target, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(ansi.c_str()));
  --State().buildNesting;
}

}  // namespace

void SetChildText(HWND child, const UInt8* text, size_t length) { SetText(child, text, length); }

void ExpandForItem(DialogPtr d, int item, const UInt8* text, size_t length, UInt8 out[256]) {
  ManagerState& st = State();
  const UInt8* params[4] = {st.params[0], st.params[1], st.params[2], st.params[3]};
  unsigned used = ExpandParameters(text, length, params, out);
  for (int k = 0; k < 4; ++k) {
    if (!(used & (1u << k))) continue;
    st.paramDialog[k] = d;
    st.paramItem[k] = SInt16(item);
    st.paramSource[k][0] = UInt8(std::min<size_t>(length, 255));
    std::memcpy(st.paramSource[k] + 1, text, st.paramSource[k][0]);
  }
}

}  // namespace kwe::dialogs

using namespace kwe;
using namespace kwe::dialogs;

KWE_API void KWE_CALL GetDialogItemText(Handle item, Str255 text) {
  if (!text) return;
  text[0] = 0;
  HWND target = TargetOf(item);
  if (!target) return;
  if (IsEditChild(target)) {
    GetEditText(target, text);
    return;
  }
  char ansi[2 * 256] = "";
  int n = GetWindowTextA(target, ansi, sizeof ansi);
  size_t out = 0;
  bool strip = DoublesAmpersands();
  for (int i = 0; i < n && out < 255; ++i) {
    // The "&" SetDialogItemText added (the doubling and the mnemonic mark)
    // is the child's, not the application's.
    if (strip && ansi[i] == '&' && ++i >= n) break;
    text[1 + out++] = text::AnsiToMacCharacter(UInt8(ansi[i]));
  }
  text[0] = UInt8(out);
}

KWE_API void KWE_CALL SetDialogItemText(Handle item, ConstStr255Param text) {
  HWND target = TargetOf(item);
  if (target && text) SetText(target, text + 1, text[0]);
}

KWE_API void KWE_CALL KWE_SetBigIText(Handle item, const void* textPtr, SInt32 length) {
  HWND target = TargetOf(item);
  if (target && textPtr && length >= 0)
    SetText(target, static_cast<const UInt8*>(textPtr), size_t(length));
}

KWE_API void KWE_CALL SelectDialogItemText(DialogPtr theDialog, SInt16 itemNo, SInt16 strtSel,
                                           SInt16 endSel) {
  HWND child = ItemWindow(theDialog, itemNo);
  if (!IsEditChild(child)) return;
  SelectEditText(child, strtSel, endSel);
  Dlg(theDialog)->editField = SInt16(itemNo - 1);
}

KWE_API void KWE_CALL ParamText(ConstStr255Param param0, ConstStr255Param param1,
                                ConstStr255Param param2, ConstStr255Param param3) {
  ManagerState& st = State();
  ConstStr255Param given[4] = {param0, param1, param2, param3};
  for (int k = 0; k < 4; ++k)
    if (given[k]) std::memcpy(st.params[k], given[k], size_t(given[k][0]) + 1);
  UInt8 now[4][256];
  std::memcpy(now, st.params, sizeof now);
  const UInt8* current[4] = {now[0], now[1], now[2], now[3]};
  for (int k = 0; k < 4; ++k) {
    if (!given[k]) continue;
    UInt8 expanded[256];
    if (ExpandParameters(now[k] + 1, now[k][0], current, expanded))
      std::memcpy(st.params[k], expanded, size_t(expanded[0]) + 1);
  }
}

KWE_API void KWE_CALL KWE_UpdateParamStr(DialogPtr theDialog, SInt16 param) {
  ManagerState& st = State();
  if (param < 0 || param > 3 || !theDialog || st.paramDialog[param] != theDialog) return;
  UInt8 text[256];
  const UInt8* params[4] = {st.params[0], st.params[1], st.params[2], st.params[3]};
  ExpandParameters(st.paramSource[param] + 1, st.paramSource[param][0], params, text);
  SetDialogItemText(static_cast<Handle>(ItemHandle(theDialog, st.paramItem[param])), text);
}

KWE_API void KWE_CALL GetIText(Handle item, Str255 text) { GetDialogItemText(item, text); }
KWE_API void KWE_CALL SetIText(Handle item, ConstStr255Param text) {
  SetDialogItemText(item, text);
}
KWE_API void KWE_CALL SelIText(DialogPtr theDialog, SInt16 itemNo, SInt16 strtSel, SInt16 endSel) {
  SelectDialogItemText(theDialog, itemNo, strtSel, endSel);
}

namespace {
void InEditField(DialogPtr d, EditCommand command) {
  if (!IsLibraryDialog(d) || Dlg(d)->editField < 0) return;
  RunEditCommand(ItemWindow(d, Dlg(d)->editField + 1), command);
}
}  // namespace

KWE_API void KWE_CALL DialogCut(DialogPtr theDialog) { InEditField(theDialog, EditCommand::Cut); }
KWE_API void KWE_CALL DialogCopy(DialogPtr theDialog) { InEditField(theDialog, EditCommand::Copy); }
KWE_API void KWE_CALL DialogPaste(DialogPtr theDialog) {
  InEditField(theDialog, EditCommand::Paste);
}
KWE_API void KWE_CALL DialogDelete(DialogPtr theDialog) {
  InEditField(theDialog, EditCommand::Clear);
}
KWE_API void KWE_CALL DlgCut(DialogPtr theDialog) { DialogCut(theDialog); }
KWE_API void KWE_CALL DlgCopy(DialogPtr theDialog) { DialogCopy(theDialog); }
KWE_API void KWE_CALL DlgPaste(DialogPtr theDialog) { DialogPaste(theDialog); }
KWE_API void KWE_CALL DlgDelete(DialogPtr theDialog) { DialogDelete(theDialog); }
