// The frame and caption of small-caption windows, drawn by the library: a
// caption band in the small system font, a close box at its left end and a
// zoom box at its right, and on windows with a grow box a sizing frame.
#include "windows/small_caption.h"

#include "KWEEvents.h"
#include "frame/session.h"
#include "windows/window_frame.h"
#include "windows/window_manager.h"
#include "windows/window_styles.h"

namespace kwe::windows {
namespace {

enum Button { kCloseUp, kCloseDown, kZoomUp, kZoomDown, kRestoreUp, kRestoreDown, kButtonCount };
HBITMAP g_buttons[kButtonCount] = {};

struct Layout {
  SIZE frame;
  int caption;  // height of the caption band
  RECT band;    // window coordinates
  RECT close;   // empty when the window has no close box
  RECT zoom;    // empty when it has no zoom box
};

Layout LayoutOf(WindowPtr w, HWND hwnd) {
  Layout l{};
  WStateData* d = DataOf(w);
  l.frame = SmallCaptionFrame(d && (d->flags & kGrowBoxFlag));
  SInt16 procID = GetWVariant(w);
  l.caption = procID == 255 ? 0 : SmallCaptionHeight();
  RECT window;
  GetWindowRect(hwnd, &window);
  int width = window.right - window.left;
  l.band = RECT{l.frame.cx, l.frame.cy, width - l.frame.cx, l.frame.cy + l.caption};
  if (Peek(w)->goAwayFlag && l.caption)
    l.close = RECT{l.band.left, l.band.top, l.band.left + l.caption, l.band.bottom};
  if ((procID & 8) && l.caption)
    l.zoom = RECT{l.band.right - l.caption, l.band.top, l.band.right, l.band.bottom};
  return l;
}

void DrawButton(HDC dc, const RECT& box, Button which) {
  if (IsRectEmpty(&box)) return;
  FrameRect(dc, &box, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  RECT inner = box;
  InflateRect(&inner, -1, -1);
  HBITMAP bitmap = g_buttons[which];
  if (!bitmap) return;
  BITMAP info;
  GetObject(bitmap, sizeof info, &info);
  HDC source = CreateCompatibleDC(dc);
  HGDIOBJ old = SelectObject(source, bitmap);
  int w = inner.right - inner.left, h = inner.bottom - inner.top;
  if (info.bmWidth == w && info.bmHeight == h)
    BitBlt(dc, inner.left, inner.top, w, h, source, 0, 0, SRCCOPY);
  else
    StretchBlt(dc, inner.left, inner.top, w, h, source, 0, 0, info.bmWidth, info.bmHeight, SRCCOPY);
  SelectObject(source, old);
  DeleteDC(source);
}

Button ZoomButton(WindowPtr w, bool down) {
  if (Peek(w)->spareFlag) return down ? kRestoreDown : kRestoreUp;
  return down ? kZoomDown : kZoomUp;
}

void Paint(WindowPtr w, HWND hwnd) {
  Layout l = LayoutOf(w, hwnd);
  HDC dc = GetWindowDC(hwnd);
  RECT window;
  GetWindowRect(hwnd, &window);
  RECT all{0, 0, window.right - window.left, window.bottom - window.top};
  const Session& s = TheSession();
  HBRUSH black = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
  HBRUSH inactive = s.brushes[2] ? s.brushes[2] : GetSysColorBrush(COLOR_INACTIVECAPTION);
  HBRUSH active = s.brushes[1] ? s.brushes[1] : GetSysColorBrush(COLOR_ACTIVECAPTION);
  if (l.frame.cx > 1) {
    // The sizing frame: its four edges, framed, with the corners marked.
    RECT edges[4] = {{all.left, all.top, all.right, l.frame.cy},
                     {all.left, all.bottom - l.frame.cy, all.right, all.bottom},
                     {all.left, all.top, l.frame.cx, all.bottom},
                     {all.right - l.frame.cx, all.top, all.right, all.bottom}};
    for (const RECT& e : edges) FillRect(dc, &e, inactive);
    FrameRect(dc, &all, black);
    int corner = l.caption + l.frame.cy;
    HGDIOBJ oldPen = SelectObject(dc, GetStockObject(BLACK_PEN));
    const int marks[8][4] = {
        {corner, 0, corner, l.frame.cy},
        {all.right - corner, 0, all.right - corner, l.frame.cy},
        {corner, all.bottom - l.frame.cy, corner, all.bottom},
        {all.right - corner, all.bottom - l.frame.cy, all.right - corner, all.bottom},
        {0, corner, l.frame.cx, corner},
        {all.right - l.frame.cx, corner, all.right, corner},
        {0, all.bottom - corner, l.frame.cx, all.bottom - corner},
        {all.right - l.frame.cx, all.bottom - corner, all.right, all.bottom - corner}};
    for (const auto& m : marks) {
      MoveToEx(dc, m[0], m[1], nullptr);
      LineTo(dc, m[2], m[3]);
    }
    SelectObject(dc, oldPen);
  } else {
    FrameRect(dc, &all, black);
  }
  if (l.caption) {
    bool hilited = Peek(w)->hilited;
    FillRect(dc, &l.band, hilited ? active : inactive);
    FrameRect(dc, &l.band, black);
    char title[257] = "";
    int length = GetWindowTextA(hwnd, title, 256);
    HGDIOBJ oldFont =
        SelectObject(dc, s.fonts[kSmallSystemFont].font ? s.fonts[kSmallSystemFont].font
                                                        : GetStockObject(DEFAULT_GUI_FONT));
    int oldMode = SetBkMode(dc, TRANSPARENT);
    int inactiveText = s.version.versionWord == 3 ? COLOR_WINDOWTEXT : COLOR_INACTIVECAPTIONTEXT;
    COLORREF oldColour = SetTextColor(dc, GetSysColor(hilited ? COLOR_CAPTIONTEXT : inactiveText));
    RECT text = l.band;
    DrawTextA(dc, title, length, &text, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SetTextColor(dc, oldColour);
    SetBkMode(dc, oldMode);
    SelectObject(dc, oldFont);
    DrawButton(dc, l.close, kCloseUp);
    DrawButton(dc, l.zoom, ZoomButton(w, false));
  }
  ReleaseDC(hwnd, dc);
}

LRESULT HitTest(WindowPtr w, HWND hwnd, LPARAM lParam) {
  Layout l = LayoutOf(w, hwnd);
  RECT window;
  GetWindowRect(hwnd, &window);
  POINT p{SInt16(LOWORD(lParam)) - window.left, SInt16(HIWORD(lParam)) - window.top};
  int width = window.right - window.left, height = window.bottom - window.top;
  if (p.x < 0 || p.y < 0 || p.x >= width || p.y >= height) return HTNOWHERE;
  if (PtInRect(&l.close, p)) return HTCLOSE;
  if (PtInRect(&l.zoom, p)) return HTMAXBUTTON;
  if (PtInRect(&l.band, p)) return HTCAPTION;
  if (l.frame.cx > 1) {
    bool left = p.x < l.frame.cx, right = p.x >= width - l.frame.cx;
    bool top = p.y < l.frame.cy, bottom = p.y >= height - l.frame.cy;
    if (top) return left ? HTTOPLEFT : right ? HTTOPRIGHT : HTTOP;
    if (bottom) return left ? HTBOTTOMLEFT : right ? HTBOTTOMRIGHT : HTBOTTOM;
    if (left) return HTLEFT;
    if (right) return HTRIGHT;
  }
  return HTCLIENT;
}

// Presses a box: the pressed bitmap while the mouse is inside, the normal
// one outside; true when the button comes up inside.
bool TrackButton(HWND hwnd, const RECT& box, Button up, Button down) {
  KWE_SetCapture(true);
  HDC dc = GetWindowDC(hwnd);
  DrawButton(dc, box, down);
  bool inside = true;
  while (StillDown()) {
    POINT p;
    GetCursorPos(&p);
    RECT window;
    GetWindowRect(hwnd, &window);
    p.x -= window.left;
    p.y -= window.top;
    bool now = PtInRect(&box, p) != 0;
    if (now != inside) DrawButton(dc, box, now ? down : up);
    inside = now;
  }
  DrawButton(dc, box, up);
  ReleaseDC(hwnd, dc);
  KWE_SetCapture(false);
  return inside;
}

}  // namespace

SIZE SmallCaptionFrame(bool growBox) {
  if (!growBox) return SIZE{1, 1};
  return SIZE{GetSystemMetrics(SM_CXFRAME), GetSystemMetrics(SM_CYFRAME)};
}

void LoadFrameBitmaps(bool mono) {
  static const char* const kNames[kButtonCount] = {"CloseButtonUp",   "CloseButtonDn",
                                                   "ZoomButtonUp",    "ZoomButtonDn",
                                                   "RestoreButtonUp", "RestoreButtonDn"};
  HMODULE library = TheSession().libraryModule;
  for (int i = 0; i < kButtonCount; ++i) {
    char name[32];
    wsprintfA(name, mono ? "%sMono" : "%s", kNames[i]);
    g_buttons[i] = LoadBitmapA(library, name);
  }
}

void ReleaseFrameBitmaps() {
  for (HBITMAP& b : g_buttons) {
    if (b) DeleteObject(b);
    b = nullptr;
  }
}

bool SmallCaptionMessage(WindowPtr w, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam,
                         LRESULT* result) {
  switch (msg) {
    case WM_NCCALCSIZE: {
      Layout l = LayoutOf(w, hwnd);
      RECT* r = reinterpret_cast<RECT*>(lParam);  // rgrc[0] of NCCALCSIZE_PARAMS too
      r->left += l.frame.cx;
      r->right -= l.frame.cx;
      r->top += l.frame.cy + l.caption;
      r->bottom -= l.frame.cy;
      *result = 0;
      return true;
    }
    case WM_NCHITTEST: *result = HitTest(w, hwnd, lParam); return true;
    case WM_NCPAINT:
      if (FlagsOf(w) & kToolWindowFlag) Peek(w)->hilited = events::ApplicationActive();
      Paint(w, hwnd);
      *result = 0;
      return true;
    case WM_NCACTIVATE:
      Peek(w)->hilited = (FlagsOf(w) & kToolWindowFlag) ? events::ApplicationActive() : wParam != 0;
      if (lParam != -1) Paint(w, hwnd);  // -1: the state alone, as Windows does
      *result = 0;
      return true;
    case WM_NCLBUTTONDOWN: {
      Layout l = LayoutOf(w, hwnd);
      RECT window;
      GetWindowRect(hwnd, &window);
      POINT p{SInt16(LOWORD(lParam)) - window.left, SInt16(HIWORD(lParam)) - window.top};
      if (PtInRect(&l.close, p)) {
        if (TrackButton(hwnd, l.close, kCloseUp, kCloseDown)) KWE_SysCommand(0, hwnd, SC_CLOSE);
        *result = 0;
        return true;
      }
      if (PtInRect(&l.zoom, p)) {
        bool zoomedOut = Peek(w)->spareFlag;
        if (TrackButton(hwnd, l.zoom, ZoomButton(w, false), ZoomButton(w, true)))
          KWE_SysCommand(0, hwnd, zoomedOut ? SC_RESTORE : SC_MAXIMIZE);
        *result = 0;
        return true;
      }
      return false;
    }
    default: return false;
  }
}

}  // namespace kwe::windows
