// Frame messages, system commands, move and size notifications and min-max
// queries of the library's windows, forwarded by the host's window
// procedures. Frame clicks that Windows carries out become pseudo-points.
#include "windows/window_frame.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

#include "frame/handle_slots.h"
#include "frame/low_memory.h"
#include "frame/notification.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "frame/system_values.h"
#include "windows/small_caption.h"
#include "windows/window_manager.h"

namespace kwe::windows {
namespace {

bool IsMdiChild(WindowPtr w) { return (FlagsOf(w) & kMdiChildFlag) != 0; }

LRESULT DefaultProcessing(HWND hwnd, WindowPtr w, UINT msg, WPARAM wParam, LPARAM lParam) {
  const Session& s = TheSession();
  if (hwnd == s.mainWindow && s.mdiClient && SessionFlag(kweFlagMDI))
    return DefFrameProcA(hwnd, s.mdiClient, msg, wParam, lParam);
  if (w && IsMdiChild(w)) return DefMDIChildProcA(hwnd, msg, wParam, lParam);
  return DefWindowProcA(hwnd, msg, wParam, lParam);
}

// While a modal dialog is up, frame clicks elsewhere are refused.
bool ModalDialogElsewhere(HWND hwnd) {
  SInt32 modal = ReadSystemValue(kSysValueModalDialog);
  return modal != 0 && HandleFromSlot<HWND>(modal) != hwnd;
}

void DrawNotificationIcon(HWND main) {
  HBITMAP icon = NotificationIcon();
  if (!icon) return;
  HDC dc = GetWindowDC(main);
  HDC source = CreateCompatibleDC(dc);
  HGDIOBJ old = SelectObject(source, icon);
  int x = 2 * GetSystemMetrics(SM_CXFRAME) + GetSystemMetrics(SM_CYCAPTION) + 4;
  int y = (GetSystemMetrics(SM_CYCAPTION) - 16) / 2 + GetSystemMetrics(SM_CYFRAME) - 1;
  DWORD rop = TheSession().version.versionWord == 3 ? 0x00330008 : 0x00660046;
  BitBlt(dc, x, y, 16, 16, source, 0, 0, rop);
  SelectObject(source, old);
  DeleteDC(source);
  ReleaseDC(main, dc);
}

// The regions follow a window Windows may have moved or sized.
void FollowWin32(WindowPtr w) {
  if (HwndOf(w)) RefreshAllRegions();
}

// The outer size of a client area of width x height in hwnd's styles.
SIZE OuterSizeFor(HWND hwnd, int width, int height) {
  RECT r{0, 0, width, height};
  AdjustWindowRectEx(&r, DWORD(GetWindowLongA(hwnd, GWL_STYLE)), FALSE,
                     DWORD(GetWindowLongA(hwnd, GWL_EXSTYLE)));
  return SIZE{r.right - r.left, r.bottom - r.top};
}

void FillMinMax(HWND hwnd, MINMAXINFO* info, int minW, int minH, int maxW, int maxH) {
  if (!info) return;
  SIZE min = OuterSizeFor(hwnd, minW, minH);
  info->ptMinTrackSize = POINT{min.cx, min.cy};
  if (maxW > 0 && maxH > 0)
    info->ptMaxTrackSize = POINT{min.cx - minW + maxW, min.cy - minH + maxH};
}

// The part a size, minimise or restore command stands for, for a window
// zoomed out (spareFlag) or not.
SInt16 ZoomPartFor(UINT command, WindowPtr w) {
  if (command == SC_MAXIMIZE && !Peek(w)->spareFlag) return kZoomOutPseudoPoint;
  return kZoomInPseudoPoint;
}

}  // namespace

LRESULT NonClientMessage(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  return KWE_NCMessage(hwnd, msg, wParam, lParam);
}

HWND WindowHandleOf(WindowPtr window) { return HwndOf(window); }

void FitToMdiClient(Rect* bounds) {
  HWND client = TheSession().mdiClient;
  RECT area;
  if (!bounds || !client || !GetClientRect(client, &area)) return;
  int width = bounds->right - bounds->left, height = bounds->bottom - bounds->top;
  int left = std::max<int>(0, std::min<int>(bounds->left, area.right - width));
  int top = std::max<int>(0, std::min<int>(bounds->top, area.bottom - height));
  *bounds = Rect{SInt16(top), SInt16(left), SInt16(top + height), SInt16(left + width)};
}

}  // namespace kwe::windows

using namespace kwe;
using namespace kwe::windows;

KWE_API LRESULT KWE_CALL KWE_NCMessage(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (msg == WM_NCLBUTTONDOWN && ModalDialogElsewhere(hwnd)) return 0;
  const Session& s = TheSession();
  if (hwnd == s.mainWindow) {
    LRESULT result = DefaultProcessing(hwnd, nullptr, msg, wParam, lParam);
    if (msg == WM_NCPAINT || msg == WM_NCACTIVATE) DrawNotificationIcon(hwnd);
    return result;
  }
  WindowPtr w = WindowOfHwnd(hwnd);
  if (w && w != State().beingClosed && DataOf(w) && (DataOf(w)->moreFlags & kSmallCaptionFlag)) {
    LRESULT result = 0;
    if (SmallCaptionMessage(w, hwnd, msg, wParam, lParam, &result)) return result;
  }
  // Windows draws the restore box for a zoomed-out window when it thinks
  // the window is maximised.
  bool pretendMaximised = w && Peek(w)->spareFlag && (msg == WM_NCPAINT || msg == WM_NCACTIVATE) &&
                          !(GetWindowLongA(hwnd, GWL_STYLE) & WS_MAXIMIZE);
  if (pretendMaximised)
    SetWindowLongA(hwnd, GWL_STYLE, GetWindowLongA(hwnd, GWL_STYLE) | WS_MAXIMIZE);
  LRESULT result = DefaultProcessing(hwnd, w, msg, wParam, lParam);
  if (pretendMaximised)
    SetWindowLongA(hwnd, GWL_STYLE, GetWindowLongA(hwnd, GWL_STYLE) & ~WS_MAXIMIZE);
  if (w && msg == WM_NCLBUTTONDOWN) FollowWin32(w);
  return result;
}

KWE_API SInt32 KWE_CALL KWE_SysCommand(SInt32 mainWindow, HWND hwnd, UINT command) {
  ManagerState& st = State();
  command &= 0xFFF0;
  WindowPtr w = WindowOfHwnd(hwnd);
  switch (command) {
    case SC_NEXTWINDOW:
    case SC_PREVWINDOW: st.dragWindow = st.dragOldFront = nullptr; return 0;
    case SC_CLOSE:
      if (w) {
        st.closeWindow = w;
        events::PostPseudoPoint(kClosePseudoPoint);
        return 1;
      }
      if (mainWindow) {
        menus::RecordMenuCommand(0xFFFF);
        return 1;
      }
      return 0;
    case SC_MAXIMIZE:
    case SC_MINIMIZE:
    case SC_RESTORE:
      if (!w || IsMdiChild(w) || hwnd == TheSession().mainWindow) return 0;
      st.zoomWindow = w;
      RefreshAllRegions();
      events::PostPseudoPoint(ZoomPartFor(command, w));
      return 1;
    default: return 0;
  }
}

KWE_API LRESULT KWE_CALL KWE_WindChange(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  ManagerState& st = State();
  WindowPtr w = WindowOfHwnd(hwnd);
  bool ours = w && w != st.beingMade && w != st.beingClosed && DataOf(w) && st.movingItself == 0;
  switch (msg) {
    case WM_MOVE:
      if (ours) {
        WStateData* d = DataOf(w);
        POINT at{SInt16(LOWORD(lParam)), SInt16(HIWORD(lParam))};
        if (!(GetWindowLongA(hwnd, GWL_STYLE) & WS_CHILD))
          ScreenToClient(TheSession().mainWindow, &at);
        int width = d->userState.right - d->userState.left;
        int height = d->userState.bottom - d->userState.top;
        d->userState =
            Rect{SInt16(at.y), SInt16(at.x), SInt16(at.y + height), SInt16(at.x + width)};
        if (!(d->flags & kToolWindowFlag)) Peek(w)->spareFlag = false;
        if (!st.dragWindow) PostDragPseudoPoint(w, w);
      }
      // The main window's children move on the screen with it.
      if (w || hwnd == TheSession().mainWindow) RefreshAllRegions();
      break;
    case WM_SIZE:
      if (ours && wParam != SIZE_MINIMIZED) {
        WStateData* d = DataOf(w);
        int width = LOWORD(lParam), height = HIWORD(lParam);
        const Rect& port = w->portRect;
        if (width != port.right - port.left || height != port.bottom - port.top) {
          if (!(d->moreFlags & kResizedFlag)) {
            d->moreFlags |= kResizedFlag;
            events::PostPseudoPoint(kGrowPseudoPoint);
          }
          d->userState.right = SInt16(d->userState.left + width);
          d->userState.bottom = SInt16(d->userState.top + height);
        }
      }
      if (w || hwnd == TheSession().mainWindow) RefreshAllRegions();
      break;
    case WM_ERASEBKGND:
      if (w) st.regionsDirty = true;
      break;
    case WM_HSCROLL:
    case WM_VSCROLL: return controls::ScrollBarMessage(hwnd, msg, wParam, lParam);
    default: break;
  }
  return DefaultProcessing(hwnd, w, msg, wParam, lParam);
}

KWE_API SInt32 KWE_CALL KWE_GetMinMaxInfo(HWND hwnd, MINMAXINFO* info) {
  // Only a library window has the extra words; another class's would hold
  // something else, or fail and leave Windows' last error set.
  if (!WindowOfHwnd(hwnd)) return 0;
  SInt16 minW = SInt16(GetWindowWord(hwnd, kMinWidthWord));
  SInt16 minH = SInt16(GetWindowWord(hwnd, kMinHeightWord));
  if (minW > 0 || minH > 0) FillMinMax(hwnd, info, minW, minH, 0, 0);
  return 0;
}

KWE_API SInt32 KWE_CALL KWE_GetMinMaxInfo2(HWND hwnd, MINMAXINFO* info, SInt16 minWidth,
                                           SInt16 minHeight) {
  FillMinMax(hwnd, info, minWidth, minHeight, 0, 0);
  return 0;
}

KWE_API SInt32 KWE_CALL KWE_GetMinMaxInfo4(HWND hwnd, MINMAXINFO* info, SInt16 minWidth,
                                           SInt16 minHeight, SInt16 maxWidth, SInt16 maxHeight) {
  FillMinMax(hwnd, info, minWidth, minHeight, maxWidth, maxHeight);
  return 0;
}

KWE_API void KWE_CALL KWE_FixupSystemMenu(HWND hwnd) {
  WindowPtr w = WindowOfHwnd(hwnd);
  if (SessionFlag(kweFlagMDI) || (w && Peek(w)->windowKind == dialogKind)) return;
  HMENU menu = GetSystemMenu(hwnd, FALSE);
  if (!menu) return;
  DeleteMenu(menu, SC_TASKLIST, MF_BYCOMMAND);
  DeleteMenu(menu, 7, MF_BYPOSITION);
  bool zoomedOut = w && Peek(w)->spareFlag;
  EnableMenuItem(menu, SC_MAXIMIZE, MF_BYCOMMAND | (zoomedOut ? MF_GRAYED : MF_ENABLED));
  EnableMenuItem(menu, SC_RESTORE, MF_BYCOMMAND | (zoomedOut ? MF_ENABLED : MF_GRAYED));
  // The close item names the key of the Ctrl+F4 close, in the host's words.
  char text[128] = "", format[51] = "", rebuilt[160];
  if (!GetMenuStringA(menu, SC_CLOSE, text, sizeof text, MF_BYCOMMAND)) return;
  if (!LoadStringA(TheSession().instance, 1025, format, sizeof format)) return;
  const char* key = "";
  if (char* tab = std::strchr(text, '\t')) {
    char* plus = std::strchr(tab, '+');
    key = plus ? plus + 1 : tab + 1;
  }
  wsprintfA(rebuilt, format, key);
  ModifyMenuA(menu, SC_CLOSE, MF_BYCOMMAND | MF_STRING, SC_CLOSE, rebuilt);
}

KWE_API LRESULT KWE_CALL KWE_MDIMessage(UINT msg, WPARAM wParam, LPARAM lParam) {
  HWND client = TheSession().mdiClient;
  return client ? SendMessageA(client, msg, wParam, lParam) : 0;
}

KWE_API UInt32 KWE_CALL KWE_MDIDefaultState(Boolean set, UInt32 state) {
  ManagerState& st = State();
  if (set) {
    st.mdiDefaultState = state;
    return state;
  }
  HWND client = TheSession().mdiClient;
  BOOL maximised = FALSE;
  HWND active = client ? reinterpret_cast<HWND>(SendMessageA(client, WM_MDIGETACTIVE, 0,
                                                             reinterpret_cast<LPARAM>(&maximised)))
                       : nullptr;
  if (active) st.mdiDefaultState = maximised ? WS_MAXIMIZE : 0;
  return st.mdiDefaultState;
}

KWE_API void KWE_CALL KWE_CheckMaxWindowRect(Rect* r, Boolean mainWindow, Boolean keepSize) {
  if (!r) return;
  int width = r->right - r->left, height = r->bottom - r->top;
  if (mainWindow) {
    RECT area{0, 0, 0, 0};
    if (HWND main = TheSession().mainWindow) {
      GetClientRect(main, &area);
      MapWindowPoints(main, nullptr, reinterpret_cast<POINT*>(&area), 2);
    }
    int right = std::min<int>(area.right, GetSystemMetrics(SM_CXSCREEN));
    int bottom = std::min<int>(area.bottom, GetSystemMetrics(SM_CYSCREEN));
    int dx = std::min(0, right - r->right), dy = std::min(0, bottom - r->bottom);
    r->left = SInt16(r->left + dx);
    r->right = SInt16(r->right + dx);
    r->top = SInt16(r->top + dy);
    r->bottom = SInt16(r->bottom + dy);
    return;
  }
  RgnHandle gray = GetGrayRgn();
  Rect g = gray && *gray ? (*gray)->rgnBBox : Rect{0, 0, 0, 0};
  int minTop = g.top + GetSystemMetrics(SM_CYCAPTION) + GetSystemMetrics(SM_CYFRAME);
  int maxBottom = g.bottom - (GetSystemMetrics(SM_CYFRAME) - 1);
  int maxRight = g.right - 2 * GetSystemMetrics(SM_CXFRAME);
  int top = r->top, left = r->left, bottom = r->bottom, right = r->right;
  if (bottom > maxBottom) {
    top -= bottom - maxBottom;
    bottom = maxBottom;
  }
  if (right > maxRight) {
    left -= right - maxRight;
    right = maxRight;
  }
  top = std::max(top, minTop);
  left = std::max<int>(left, g.left);
  if (!keepSize) {
    bottom = top + height;
    right = left + width;
  }
  *r = Rect{SInt16(top), SInt16(left), SInt16(bottom), SInt16(right)};
}

KWE_API void KWE_CALL KWE_WindowLocation(SInt16 mode, WindowPtr window, void* where) {
  if (!where) return;
  POINT origin{0, 0};
  if (GrafPtr wmgr = kwe::lowmem::At<GrafPtr>(kwe::lowmem::Slot::WMgrPort)) {
    origin.x = -wmgr->portRect.left;
    origin.y = -wmgr->portRect.top;
  }
  if (mode == 0) {
    Point* p = static_cast<Point*>(where);
    p->h = SInt16(p->h + origin.x);
    p->v = SInt16(p->v + origin.y);
    return;
  }
  HWND hwnd = HwndOf(window);
  if (!hwnd) return;
  RECT r{0, 0, window->portRect.right - window->portRect.left,
         window->portRect.bottom - window->portRect.top};
  MapWindowPoints(hwnd, nullptr, reinterpret_cast<POINT*>(&r), 2);
  OffsetRect(&r, origin.x, origin.y);
  AdjustWindowRectEx(&r, DWORD(GetWindowLongA(hwnd, GWL_STYLE)), FALSE,
                     DWORD(GetWindowLongA(hwnd, GWL_EXSTYLE)));
  *static_cast<Rect*>(where) =
      Rect{SInt16(r.top), SInt16(r.left), SInt16(r.bottom), SInt16(r.right)};
}

KWE_API void KWE_CALL KWE_TopMainWnd(void) {
  HWND main = TheSession().mainWindow;
  if (!main) return;
  if (IsIconic(main))
    ShowWindow(main, SW_SHOWNORMAL);
  else
    BringWindowToTop(main);
}

KWE_API void KWE_CALL KWE_SetWindowParent(WindowPtr window, WindowPtr parent) {
  HWND hwnd = HwndOf(window);
  if (!hwnd) return;
  HWND newParent = parent ? HwndOf(parent) : TheSession().mainWindow;
  if (newParent && GetParent(hwnd) != newParent) SetParent(hwnd, newParent);
}
