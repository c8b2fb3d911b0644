// The window procedures dialog children are subclassed with, and the
// drawing of the owner-drawn ones (user items, icons, pictures) that the
// host forwards from WM_DRAWITEM.
#include <windows.h>

#include <cstring>

#include "KWEEvents.h"
#include "Memory.h"
#include "dialogs/dialog_manager.h"
#include "events/translation_state.h"
#include "frame/subsystems.h"

namespace kwe::dialogs {
namespace {

constexpr UINT kCdefIdMark = 0xFD00;
constexpr LPARAM kRepeatedReleaseBits = LPARAM(3) << 30;
constexpr Size kMacIconSize = 128;

LRESULT Forward(WNDPROC previous, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (!previous) return DefWindowProcA(hwnd, msg, wParam, lParam);
  return CallWindowProcA(previous, hwnd, msg, wParam, lParam);
}

LPARAM InParent(HWND hwnd, LPARAM lParam) {
  POINT at{SInt16(LOWORD(lParam)), SInt16(HIWORD(lParam))};
  MapWindowPoints(hwnd, GetParent(hwnd), &at, 1);
  return MAKELPARAM(at.x, at.y);
}

// A 32 x 32 'ICON': 1 bits black, rows of four bytes (a monochrome DDB's
// rows are word-aligned, so the bytes serve as they are).
void DrawMacIcon(HDC dc, const UInt8* bits, const RECT& r) {
  HBITMAP bitmap = CreateBitmap(32, 32, 1, 1, bits);
  HDC memory = CreateCompatibleDC(dc);
  HGDIOBJ old = SelectObject(memory, bitmap);
  COLORREF text = SetTextColor(dc, RGB(0, 0, 0)), back = SetBkColor(dc, RGB(255, 255, 255));
  StretchBlt(dc, r.left, r.top, r.right - r.left, r.bottom - r.top, memory, 0, 0, 32, 32,
             NOTSRCCOPY);
  SetTextColor(dc, text);
  SetBkColor(dc, back);
  SelectObject(memory, old);
  DeleteDC(memory);
  DeleteObject(bitmap);
}

void DrawItem(DialogPtr d, const DRAWITEMSTRUCT& dis) {
  int item = int(dis.CtlID);
  ItemView v;
  if (!ItemAt(d, item, &v)) return;
  void* handle = ItemHandle(d, item);
  switch (TypeOf(v.type)) {
    case kUserItem: {
      if (!handle) return;
      GrafPtr saved = nullptr;
      GetPort(&saved);
      SetPort(d);
      RgnHandle clip = NewRgn();
      if (clip) GetClip(clip);
      ClipRect(&v.rect);
      reinterpret_cast<UserItemProcPtr>(handle)(d, SInt16(item));
      if (clip) {
        SetClip(clip);
        DisposeRgn(clip);
      }
      SetPort(saved);
      break;
    }
    case kIconItem: {
      Handle h = static_cast<Handle>(handle);
      if (!h || !*h) return;
      Size size = GetHandleSize(h);
      if (size == 4) {
        SInt32 icon;
        std::memcpy(&icon, *h, sizeof icon);
        DrawIcon(dis.hDC, 0, 0, reinterpret_cast<HICON>(intptr_t(icon)));
      } else if (size >= kMacIconSize) {
        DrawMacIcon(dis.hDC, reinterpret_cast<const UInt8*>(*h), dis.rcItem);
      }
      break;
    }
    default: break;
  }
}

}  // namespace
}  // namespace kwe::dialogs

using namespace kwe;
using namespace kwe::dialogs;

KWE_API LRESULT KWE_CALL KWE_UserItem(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (msg != WM_DRAWITEM || !lParam) return 0;
  const auto& dis = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
  if (dis.CtlType == ODT_LISTBOX) return lists::DrawItem(dis);
  DialogPtr d = DialogOfHwnd(hwnd);
  if (!d || (dis.CtlID & 0xFF00) == kCdefIdMark || dis.CtlType != ODT_BUTTON) return 0;
  (void)wParam;
  DrawItem(d, dis);
  return 1;
}

KWE_API LRESULT CALLBACK K_StaticWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  return Forward(State().staticProc, hwnd, msg, wParam, lParam);
}

KWE_API LRESULT CALLBACK K_EditWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  // A character repeated while its key goes up also reaches the dialog.
  if (msg == WM_CHAR && (lParam & kRepeatedReleaseBits) == kRepeatedReleaseBits)
    PostMessageA(GetParent(hwnd), msg, wParam, lParam);
  return Forward(State().editProc, hwnd, msg, wParam, lParam);
}

KWE_API LRESULT CALLBACK K_UserItemWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  switch (msg) {
    case BM_SETSTYLE: return 0;
    case WM_ERASEBKGND: return 1;
    default: break;
  }
  if (msg >= WM_MOUSEMOVE && msg <= WM_LBUTTONUP)
    return KWE_EventMouse(GetParent(hwnd), msg, wParam, InParent(hwnd, lParam));
  if (msg >= WM_KEYDOWN && msg <= WM_CHAR) {
    KWE_EventKey(GetParent(hwnd), msg, wParam, lParam);
    return 0;
  }
  return Forward(State().userItemProc, hwnd, msg, wParam, lParam);
}
