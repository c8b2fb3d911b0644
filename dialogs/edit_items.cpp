#include "dialogs/edit_items.h"

#include <algorithm>
#include <vector>

#include "Dialogs.h"
#include "KWEWindows.h"
#include "TextEdit.h"
#include "dialogs/dialog_manager.h"
#include "frame/session.h"
#include "memory/character_conversion.h"

namespace kwe::dialogs {

HWND MakeEditChild(HWND dialog, int item, const Rect& r, bool multiLine, HFONT font,
                   const UInt8* text, size_t length) {
  DWORD style = WS_CHILD | WS_VISIBLE | WS_BORDER |
                (multiLine ? ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN : ES_AUTOHSCROLL);
  DWORD exStyle = TheSession().version.NewShell() ? WS_EX_CLIENTEDGE : 0;
  TEXTMETRICA tm{};
  HDC dc = GetDC(dialog);
  HGDIOBJ old = SelectObject(dc, font);
  GetTextMetricsA(dc, &tm);
  SelectObject(dc, old);
  ReleaseDC(dialog, dc);
  int width = std::max(0, r.right - r.left) + 3, height = std::max(0, r.bottom - r.top);
  int extra = std::max(0, int(tm.tmHeight) + 8 - height);
  HWND child = CreateWindowExA(
      exStyle, "edit", "", style, r.left, r.top - (extra + 1) / 2, width + 1, height + extra,
      dialog, reinterpret_cast<HMENU>(intptr_t(item)), TheSession().instance, nullptr);
  if (!child) return nullptr;
  WNDPROC previous = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(K_EditWndProc)));
  if (!State().editProc) State().editProc = previous;
  SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  SetEditText(child, text, length);
  return child;
}

bool IsEditChild(HWND child) {
  return child &&
         GetWindowLongPtrA(child, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(K_EditWndProc);
}

bool IsMultiLine(HWND child) {
  return IsEditChild(child) && (GetWindowLongA(child, GWL_STYLE) & ES_MULTILINE);
}

void SetEditText(HWND child, const UInt8* text, size_t length) {
  std::vector<char> ansi;
  ansi.reserve(2 * length + 1);
  for (size_t i = 0; i < length; ++i) {
    UInt8 c = text::MacToAnsiCharacter(text[i]);
    ansi.push_back(char(c));
    if (c == '\r' && (i + 1 >= length || text[i + 1] != '\n')) ansi.push_back('\n');
  }
  ansi.push_back(0);
  State().buildNesting++;
  SendMessageA(child, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(ansi.data()));
  State().buildNesting--;
  UpdateWindow(child);
}

void GetEditText(HWND child, Str255 text) {
  char ansi[2 * 256] = "";
  int n = GetWindowTextA(child, ansi, sizeof ansi);
  size_t out = 0;
  for (int i = 0; i < n && out < 255; ++i) {
    if (ansi[i] == '\r' && i + 1 < n && ansi[i + 1] == '\n') ++i;
    text[1 + out++] = text::AnsiToMacCharacter(UInt8(ansi[i] == '\n' ? '\r' : ansi[i]));
  }
  text[0] = UInt8(out);
}

void SelectEditText(HWND child, int start, int end) {
  SetFocus(child);
  SendMessageA(child, EM_SETSEL, WPARAM(start), LPARAM(end));
  SendMessageA(child, EM_SCROLLCARET, 0, 0);
  WindowPtr dialog = nullptr;
  if (KWE_GetwPtr(GetParent(child), &dialog)) BindEditRecord(dialog, child);
}

void BindEditRecord(DialogPtr dialog, HWND child) {
  if (!dialog || !IsEditChild(child)) return;
  DialogPeek d = reinterpret_cast<DialogPeek>(dialog);
  RECT place;
  GetWindowRect(child, &place);
  MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&place), 2);
  Rect view{SInt16(place.top), SInt16(place.left), SInt16(place.bottom), SInt16(place.right)};
  if (!d->textH) {
    d->textH = KWE_TENewBound(child, &view);
    return;
  }
  TERec* r = *d->textH;
  if (r->hDispText == child) return KWE_SethTEfromhWnd(d->textH, false);
  r->hDispText = child;
  r->viewRect = r->destRect = view;
  KWE_SethTEfromhWnd(d->textH, true);
}

void RefreshEditRecord(DialogPtr dialog) {
  DialogPeek d = reinterpret_cast<DialogPeek>(dialog);
  if (d && d->textH && d->editField >= 0) KWE_SethTEfromhWnd(d->textH, false);
}

TEHandle FocusedEditRecord(DialogPtr dialog) {
  DialogPeek d = reinterpret_cast<DialogPeek>(dialog);
  return d && d->editField >= 0 ? d->textH : nullptr;
}

void DisposeEditRecord(DialogPtr dialog) {
  DialogPeek d = reinterpret_cast<DialogPeek>(dialog);
  if (!d || !d->textH) return;
  TEDispose(d->textH);
  d->textH = nullptr;
}

void RunEditCommand(HWND child, EditCommand command) {
  static const UINT messages[] = {WM_CUT, WM_COPY, WM_PASTE, WM_CLEAR};
  if (IsEditChild(child)) SendMessageA(child, messages[int(command)], 0, 0);
}

}  // namespace kwe::dialogs
