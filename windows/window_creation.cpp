// Making and closing windows: the record, the Win32 window, the port on its
// device context and the ties between them, made together and undone
// together.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "Memory.h"
#include "Resources.h"
#include "frame/handle_slots.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "frame/system_values.h"
#include "memory/character_conversion.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/window_ports.h"
#include "windows/small_caption.h"
#include "windows/window_frame.h"
#include "windows/window_manager.h"
#include "windows/window_styles.h"

namespace kwe::windows {
namespace {

constexpr size_t kWindowRecordSize = sizeof(WindowRecord);
constexpr ResType kWindowTemplateType = 0x57494E44;  // 'WIND'
constexpr ATOM kNoAtom = 0;
constexpr LONG kCoordinateLimit = 16383;

SInt32 TakeOneShot(SInt16 index, SInt32 reset) {
  SInt32 value = ReadSystemValue(index);
  if (value != reset) SystemValue(1, index, reset);
  return value;
}

// The title in the ANSI character set, NUL-terminated.
void AnsiTitle(ConstStr255Param title, char out[256]) {
  size_t n = title ? title[0] : 0;
  text::MacToAnsiBytes(title ? title + 1 : nullptr, reinterpret_cast<UInt8*>(out), n);
  out[n] = 0;
}

HWND ParentWindow(const WindowStyle& s) {
  const Session& session = TheSession();
  switch (s.parent) {
    case ParentKind::MdiClient: return session.mdiClient ? session.mdiClient : session.mainWindow;
    case ParentKind::Desktop: return nullptr;
    case ParentKind::MainWindow: return session.mainWindow;
  }
  return session.mainWindow;
}

// Keeps a captioned window's frame where the user can reach it: not more
// than a frame's width off the parent's left and top, and not past its
// client width (height) less a scroll bar.
void KeepReachable(RECT& outer, HWND parent, SIZE frame) {
  // The screen's size as InitWindows found it: GetSystemMetrics asks the
  // display driver each time under Wine.
  RECT client{0, 0, State().screenWidth, State().screenHeight};
  if (parent) GetClientRect(parent, &client);
  int width = outer.right - outer.left, height = outer.bottom - outer.top;
  int maxLeft = client.right - GetSystemMetrics(SM_CXVSCROLL);
  int maxTop = client.bottom - GetSystemMetrics(SM_CYHSCROLL);
  int left = std::max<int>(outer.left, -frame.cx);
  int top = std::max<int>(outer.top, -frame.cy);
  if (left > maxLeft) left = std::max<int>(maxLeft, -frame.cx);
  if (top > maxTop) top = std::max<int>(maxTop, -frame.cy);
  outer = RECT{left, top, left + width, top + height};
}

struct Creation {
  WindowPtr w = nullptr;
  bool ownsRecord = false;
  HWND hwnd = nullptr;
  bool mdiChild = false;
  Handle data = nullptr;
  bool portOpen = false;
};

// Undoes whatever a creation made before it failed.
void Undo(Creation& c) {
  if (c.portOpen) {
    WindowPeek p = Peek(c.w);
    for (RgnHandle rgn : {p->strucRgn, p->contRgn, p->updateRgn})
      if (rgn) DisposeRgn(rgn);
    if (p->titleHandle) DisposeHandle(reinterpret_cast<Handle>(p->titleHandle));
    if (IsColourWindow(c.w))
      CloseCPort(reinterpret_cast<CGrafPtr>(c.w));
    else
      ClosePort(c.w);
  }
  if (c.hwnd) {
    if (ATOM atom = TheSession().windowFlagAtom) RemovePropA(c.hwnd, MAKEINTATOM(atom));
    if (c.mdiChild)
      SendMessageA(TheSession().mdiClient, WM_MDIDESTROY, reinterpret_cast<WPARAM>(c.hwnd), 0);
    else
      DestroyWindow(c.hwnd);
  }
  if (c.data) DisposeHandle(c.data);
  if (c.ownsRecord && c.w) DisposePtr(reinterpret_cast<Ptr>(c.w));
}

// The MDI client activates every child it makes; one made hidden or behind
// gives the activation back to the child that had it.
HWND CreateMdiChild(const char* title, DWORD style, const RECT& outer, bool visible,
                    bool activate) {
  HWND client = TheSession().mdiClient;
  SendMessageA(client, WM_SETREDRAW, FALSE, 0);
  HWND active = reinterpret_cast<HWND>(SendMessageA(client, WM_MDIGETACTIVE, 0, 0));
  HWND activeChild = active;
  if (!active) {
    HWND a = GetActiveWindow();
    if (a != TheSession().mainWindow) active = a;
  }
  MDICREATESTRUCTA mc{};
  mc.szClass = MdiWindowClassName();
  mc.szTitle = title;
  mc.hOwner = TheSession().instance;
  if (SessionFlag(kweFlagMDIDefaultPlacement) && !DialogCreationMode()) {
    mc.x = mc.y = mc.cx = mc.cy = CW_USEDEFAULT;
  } else {
    SIZE frame = FrameSize(FrameKind::Sizing);
    bool zoomed = IsZoomed(TheSession().mainWindow);
    mc.x = outer.left + (zoomed ? 0 : frame.cx);
    mc.y = outer.top + frame.cy;
    mc.cx = outer.right - outer.left;
    mc.cy = outer.bottom - outer.top;
  }
  if (IsIconic(TheSession().mainWindow)) {
    mc.cx = 500;
    mc.cy = 302;
  }
  mc.style = style | State().mdiDefaultState;
  HWND child =
      reinterpret_cast<HWND>(SendMessageA(client, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&mc)));
  if (child) {
    // The style without WS_CHILD would make GetParent answer the owner (none)
    // instead of the MDI client.
    SetWindowLongA(child, GWL_STYLE,
                   LONG(style | WS_CHILD | (GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE)));
    SetWindowPos(child, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    if (!visible) ShowWindow(child, SW_HIDE);
    if (!activate && activeChild) {
      SendMessageA(client, WM_MDIACTIVATE, WPARAM(activeChild), 0);
      // Activation raised it to the top: back where the list has it.
      if (WindowPtr w = WindowOfHwnd(activeChild)) PlaceInWin32Order(w, PreviousOf(w));
    }
  }
  SendMessageA(client, WM_SETREDRAW, TRUE, 0);
  if (active) {
    SendMessageA(active, WM_NCACTIVATE, TRUE, 0);
    SendMessageA(active, WM_NCPAINT, 1, 0);
  }
  return child;
}

bool TieToWin32(Creation& c, const WindowStyle& s, UInt16 flags, UInt16 moreFlags) {
  HWND hwnd = c.hwnd;
  // The host registers the window classes with room for the window's longs.
  if (GetClassLongA(hwnd, GCL_CBWNDEXTRA) < kMinHeightWord + 2) return false;
  c.data = NewHandleClear(sizeof(WStateData));
  if (!c.data) return false;
  Peek(c.w)->dataHandle = c.data;
  WStateData& d = *reinterpret_cast<WStateData*>(*c.data);
  d.windowHandle = HandleToSlot(hwnd);
  d.flags = flags;
  d.moreFlags = moreFlags;
  ATOM atom = TheSession().windowFlagAtom;
  if (atom == kNoAtom || !SetPropA(hwnd, MAKEINTATOM(atom), reinterpret_cast<HANDLE>(1)))
    return false;
  // The extra bytes start at zero: only what differs is written, each write
  // being a round trip to the window server.
  SetWindowLongPtrA(hwnd, kWindowPtrLong, reinterpret_cast<LONG_PTR>(c.w));
  SetWindowLongA(hwnd, kStyleLong, LONG(s.style));
  if (State().minWidth) SetWindowWord(hwnd, kMinWidthWord, WORD(State().minWidth));
  if (State().minHeight) SetWindowWord(hwnd, kMinHeightWord, WORD(State().minHeight));
  static const auto arrow = reinterpret_cast<ULONG_PTR>(LoadCursorA(nullptr, IDC_ARROW));
  if (GetClassLongPtrA(hwnd, GCLP_HCURSOR) != arrow)
    SetClassLongPtrA(hwnd, GCLP_HCURSOR, LONG_PTR(arrow));
  return true;
}

RgnHandle RectRegion(const RECT& r) {
  RgnHandle rgn = NewRgn();
  if (rgn) SetRectRgn(rgn, SInt16(r.left), SInt16(r.top), SInt16(r.right), SInt16(r.bottom));
  return rgn;
}

WindowPtr MakeWindow(void* storage, const Rect* bounds, ConstStr255Param title, Boolean visible,
                     SInt16 procID, WindowPtr behind, Boolean goAway, SInt32 refCon, bool colour) {
  if (!bounds || !State().initialised) return nullptr;
  Rect r = *bounds;
  bool mdi = SessionFlag(kweFlagMDI) && TheSession().mdiClient;
  bool dialog = DialogCreationMode();

  Creation c;
  c.w = static_cast<WindowPtr>(storage);
  if (c.w) {
    std::memset(c.w, 0, kWindowRecordSize);
  } else {
    c.w = reinterpret_cast<WindowPtr>(NewPtrClear(kWindowRecordSize));
    if (!c.w) return nullptr;
    c.ownsRecord = true;
  }
  SInt32 override = TakeOneShot(kSysValueProcIdOverride, -1);
  if (override >= 0) procID = SInt16(override);
  if (mdi && !dialog && (procID == 0 || procID == 4 || procID == 8 || procID == 12))
    FitToMdiClient(&r);

  UInt16 modifiers = UInt16(TakeOneShot(kSysValueStyleModifiers, 0));
  StyleContext context;
  context.dialogCreation = dialog;
  context.dialogChild = ReadSystemValue(kSysValueDialogChild) != 0 || (modifiers & kModDialogChild);
  context.popUpDocument = ReadSystemValue(kSysValuePopUpDocument) != 0;
  context.mdi = mdi;
  WindowStyle s = StyleForProcId(procID, context);
  if (modifiers & kModNotTool) s.toolWindow = false;
  if (modifiers & kModTool) s.toolWindow = true;
  if ((modifiers & kModNormalCaption) && s.caption != CaptionKind::None)
    s.caption = CaptionKind::Normal;
  if ((modifiers & kModSmallCaption) && s.caption != CaptionKind::None)
    s.caption = CaptionKind::Small;
  if (modifiers & kModMaximize) s.style |= WS_MAXIMIZE;
  bool screenPlacement =
      (modifiers & kModSetPopUpPlacement) && !(modifiers & kModClearPopUpPlacement);
  HMENU menu = reinterpret_cast<HMENU>(static_cast<intptr_t>(TakeOneShot(kSysValueWindowMenu, 0)));
  if (menu) s.style &= ~WS_CHILD;
  // A dialog's windows are pop-ups of the main window unless asked to stay children.
  if (dialog && (s.style & WS_CHILD) && !context.dialogChild) {
    s.style = (s.style & ~WS_CHILD) | WS_POPUP;
    s.parent = ParentKind::MainWindow;
  }
  bool popUp = !(s.style & WS_CHILD);
  bool mdiChild = s.parent == ParentKind::MdiClient && mdi && (s.style & WS_CHILD);
  if (mdiChild) s.style &= ~WS_CHILD;  // WM_MDICREATE makes it a child of the client

  // The outer rectangle around the port rectangle.
  RECT outer{r.left, r.top, r.right, r.bottom};
  HWND parent = ParentWindow(s);
  if (popUp && parent && !screenPlacement) {
    POINT origin{0, 0};
    ClientToScreen(TheSession().mainWindow, &origin);
    OffsetRect(&outer, origin.x, origin.y);
  }
  if (s.caption == CaptionKind::Small) {
    // The library draws this frame itself, in its own widths.
    SIZE frame = SmallCaptionFrame(s.growBox);
    InflateRect(&outer, frame.cx, frame.cy);
    outer.top -= SmallCaptionHeight();
  } else if (mdiChild) {
    AdjustWindowRect(&outer, s.style | WS_CHILD | 0x000F0000, FALSE);
  } else {
    // Windows gives a window that is neither a child nor a pop-up a caption.
    DWORD style = s.style & (WS_CHILD | WS_POPUP) ? s.style : s.style | WS_CAPTION;
    AdjustWindowRectEx(&outer, style, menu != nullptr, s.exStyle);
  }
  if (s.caption != CaptionKind::None && !popUp) KeepReachable(outer, parent, FrameSize(s.frame));
  // strucRgn and contRgn hold screen coordinates within +-16383: so does the
  // window, and its right and bottom do not come before its left and top.
  POINT o{0, 0};
  if (!popUp && parent) ClientToScreen(parent, &o);
  outer.left = std::clamp<LONG>(outer.left, -kCoordinateLimit - o.x, kCoordinateLimit - o.x);
  outer.top = std::clamp<LONG>(outer.top, -kCoordinateLimit - o.y, kCoordinateLimit - o.y);
  outer.right = std::clamp<LONG>(outer.right, outer.left, kCoordinateLimit - o.x);
  outer.bottom = std::clamp<LONG>(outer.bottom, outer.top, kCoordinateLimit - o.y);

  char ansiTitle[256];
  AnsiTitle(title, ansiTitle);
  // On Windows 3.0 the system menu and the boxes come back only for windows
  // wide enough to hold them.
  DWORD lateBits = 0;
  if (TheSession().version.versionWord == 3) {
    lateBits = s.style & 0x000B0000;
    s.style &= ~lateBits;
  }

  UInt16 flags = UInt16(procID & kProcIdByte);
  if (s.growBox) flags |= kGrowBoxFlag;
  if (popUp) flags |= kPopUpFlag;
  if (s.toolWindow) flags |= kToolWindowFlag;
  if (mdiChild) flags |= kMdiChildFlag;
  if (dialog) flags |= kMadeForDialogFlag;
  UInt16 moreFlags = c.ownsRecord ? 0 : kCallerStorageFlag;
  if (s.caption == CaptionKind::Small) moreFlags |= kSmallCaptionFlag;

  ManagerState& st = State();
  st.beingMade = c.w;
  st.beingMadeHwnd = nullptr;
  st.beingMadeFlags = flags;
  if (mdiChild) {
    bool activate = visible && !(flags & kToolWindowFlag) &&
                    behind == reinterpret_cast<WindowPtr>(intptr_t(-1));
    c.hwnd = CreateMdiChild(ansiTitle, s.style, outer, visible != 0, activate);
    c.mdiChild = c.hwnd != nullptr;
  } else {
    HWND owner = parent;
    c.hwnd = CreateWindowExA(s.exStyle, WindowClassName(), ansiTitle, s.style, outer.left,
                             outer.top, outer.right - outer.left, outer.bottom - outer.top, owner,
                             menu, TheSession().instance, nullptr);
  }
  st.beingMadeHwnd = c.hwnd;
  GrafPtr savedPort = nullptr;
  GetPort(&savedPort);
  bool ok = c.hwnd && TieToWin32(c, s, flags, moreFlags);
  // Windows sized the frame before the window was known as the library's.
  if (ok && s.caption == CaptionKind::Small)
    SetWindowPos(c.hwnd, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  if (ok && lateBits && outer.right - outer.left >= 65)
    SetWindowLongA(c.hwnd, GWL_STYLE, GetWindowLongA(c.hwnd, GWL_STYLE) | LONG(lateBits));
  if (ok) {
    ok = quickdraw::OpenWindowPort(c.w, colour, c.hwnd);
    c.portOpen = ok;
  }
  WindowPeek p = Peek(c.w);
  RECT window, client;
  size_t titleLength = title ? title[0] : 0;
  if (ok) {
    // The client area Windows gave: it keeps windows to their minimum size.
    GetClientRect(c.hwnd, &client);
    PortSize(SInt16(client.right), SInt16(client.bottom));
    GetWindowRect(c.hwnd, &window);
    MapWindowPoints(c.hwnd, nullptr, reinterpret_cast<POINT*>(&client), 2);
    p->strucRgn = RectRegion(window);
    p->contRgn = RectRegion(client);
    p->updateRgn = NewRgn();
    p->titleHandle = reinterpret_cast<StringHandle>(NewHandle(Size(titleLength + 1)));
    // Without memory for a region or the title the window is not made.
    ok = p->strucRgn && p->contRgn && p->updateRgn && p->titleHandle && c.w->visRgn && c.w->clipRgn;
  }
  if (!ok) {
    Undo(c);
    st.beingMade = nullptr;
    st.beingMadeHwnd = nullptr;
    SetPort(savedPort);
    return nullptr;
  }

  quickdraw::SetWindowPortVisible(c.w, false);
  TextFont(1);
  p->windowKind = dialog ? dialogKind : userKind;
  p->windowDefProc = reinterpret_cast<Handle>(static_cast<intptr_t>(procID));
  p->goAwayFlag = goAway != 0;
  p->visible = false;
  WStateData& d = *DataOf(c.w);
  d.userState = r;
  if (ReadSystemValue(kSysValueStandardStateAtOnce)) d.stdState = StandardStateOf(c.w);
  std::memcpy(*p->titleHandle, title ? title : (const UInt8*)"", titleLength + 1);
  if (!title) (*p->titleHandle)[0] = 0;
  p->refCon = refCon;

  if (GetWindowLongA(c.hwnd, GWL_STYLE) & WS_SYSMENU) {
    KWE_FixupSystemMenu(c.hwnd);
    if (!goAway || (modifiers & kModNoCloseItem))
      DeleteMenu(GetSystemMenu(c.hwnd, FALSE), SC_CLOSE, MF_BYCOMMAND);
  }

  st.beingMade = nullptr;
  st.beingMadeHwnd = nullptr;
  WindowPtr front = FrontWindow();
  LinkBefore(c.w, FirstOfGroup(GroupOf(c.w)));
  bool inFront = behind == reinterpret_cast<WindowPtr>(intptr_t(-1));
  if (!inFront) {
    SendBehind(c.w, behind);
    if (visible) ShowOrHide(c.w, true, false);
    // A window of an earlier group (a pop-up) lies in front of the children
    // whatever it was made behind: when it is the front window now, the
    // activation follows it.
    if (FrontWindow() != front) MoveActivation(front, FrontWindow());
  } else if (!visible) {
    PlaceInWin32Order(c.w, nullptr);
  } else {
    // Hilited while still hidden, the frame is drawn once, when it is shown
    // (in front of its group, where showing puts it).
    bool activates = !(flags & kToolWindowFlag);
    if (activates) HiliteWindow(c.w, true);
    ShowOrHide(c.w, true, false, lateBits != 0);
    // In front even of the pop-ups, as SelectWindow puts a window.
    if (activates) {
      MoveActivation(front, c.w);
      st.selected = c.w;
    }
  }
  RefreshRegions(c.w);
  SetPort(savedPort);
  SystemValue(1, kSysValueDialogChild, 0);
  SystemValue(1, kSysValuePopUpDocument, 0);
  return c.w;
}

// The MDI client activates (and raises) a child of its own choosing when the
// active one is destroyed; the first visible MDI child of the list takes over
// instead, and stays where the list has it.
void HandOverMdiActivation(HWND closing) {
  HWND client = TheSession().mdiClient;
  if (reinterpret_cast<HWND>(SendMessageA(client, WM_MDIGETACTIVE, 0, 0)) != closing) return;
  for (WindowPeek q = ListHead(); q; q = q->nextWindow) {
    WindowPtr next = AsPtr(q);
    if (!q->visible || !(FlagsOf(next) & kMdiChildFlag)) continue;
    SendMessageA(client, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(HwndOf(next)), 0);
    PlaceInWin32Order(next, PreviousOf(next));
    return;
  }
}

// A 'WIND' resource, already in native order: bounds, procID, visible and
// goAwayFlag (Boolean words, the value in the first byte), refCon, title.
WindowPtr FromTemplate(SInt16 id, void* storage, WindowPtr behind) {
  Handle h = GetResource(kWindowTemplateType, id);
  if (!h || !*h || GetHandleSize(h) < 19) return nullptr;
  const UInt8* t = reinterpret_cast<const UInt8*>(*h);
  Rect bounds;
  std::memcpy(&bounds, t, sizeof bounds);
  SInt16 procID;
  std::memcpy(&procID, t + 8, 2);
  SInt32 refCon;
  std::memcpy(&refCon, t + 14, 4);
  Str255 title;
  size_t length = std::min<size_t>(t[18], size_t(GetHandleSize(h)) - 19);
  title[0] = UInt8(length);
  std::memcpy(title + 1, t + 19, length);
  Boolean visible = t[10] != 0, goAway = t[12] != 0;
  ReleaseResource(h);
  return NewWindow(storage, &bounds, title, visible, procID, behind, goAway, refCon);
}

}  // namespace

WindowPtr KWE_CALL NewWindowDefault(void* storage, const Rect* bounds, ConstStr255Param title,
                                    Boolean visible, SInt16 procID, WindowPtr behind,
                                    Boolean goAway, SInt32 refCon) {
  return MakeWindow(storage, bounds, title, visible, procID, behind, goAway, refCon, false);
}

WindowPtr KWE_CALL NewCWindowDefault(void* storage, const Rect* bounds, ConstStr255Param title,
                                     Boolean visible, SInt16 procID, WindowPtr behind,
                                     Boolean goAway, SInt32 refCon) {
  return MakeWindow(storage, bounds, title, visible, procID, behind, goAway, refCon, true);
}

void KWE_CALL CloseWindowDefault(WindowPtr w) {
  WStateData* d = DataOf(w);
  if (!d) return;
  ManagerState& st = State();
  WindowPeek p = Peek(w);
  HWND hwnd = HwndOf(w);
  bool mdiChild = d->flags & kMdiChildFlag;
  controls::DisposeWindowControls(w);
  st.beingClosed = w;
  st.beingClosedHwnd = hwnd;
  if (p->visible) HideWindow(w);
  Unlink(w);
  if (st.selected == w) st.selected = nullptr;
  // An update in progress on this window ends with it.
  for (int i = 0; i < st.updateNesting && i < 2; ++i)
    if (st.levels[i].window == w) st.levels[i].window = nullptr;
  GrafPtr current = nullptr;
  GetPort(&current);
  if (IsColourWindow(w))
    CloseCPort(reinterpret_cast<CGrafPtr>(w));
  else
    ClosePort(w);
  if (current == w) SetPort(FrontWindow());
  // EndUpdate gives back the port BeginUpdate found: not this one any more.
  for (int i = 0; i < st.updateNesting && i < 2; ++i)
    if (st.levels[i].savedPort == w) st.levels[i].savedPort = FrontWindow();
  DisposeRgn(p->strucRgn);
  DisposeRgn(p->contRgn);
  DisposeRgn(p->updateRgn);
  p->strucRgn = p->contRgn = p->updateRgn = nullptr;
  if (ATOM atom = TheSession().windowFlagAtom) RemovePropA(hwnd, MAKEINTATOM(atom));
  if (GetWindowLongA(hwnd, GWL_STYLE) & WS_SYSMENU) GetSystemMenu(hwnd, TRUE);
  if (mdiChild) {
    HandOverMdiActivation(hwnd);
    SendMessageA(TheSession().mdiClient, WM_MDIDESTROY, reinterpret_cast<WPARAM>(hwnd), 0);
  } else {
    DestroyWindow(hwnd);
  }
  ClearPseudoPointsNaming(w);
  events::ForgetWindow(w);
  if (p->titleHandle) DisposeHandle(reinterpret_cast<Handle>(p->titleHandle));
  p->titleHandle = nullptr;
  DisposeHandle(p->dataHandle);
  p->dataHandle = nullptr;
  st.beingClosed = nullptr;
  st.beingClosedHwnd = nullptr;
  for (WindowPeek q = ListHead(); q; q = q->nextWindow)
    if (q->visible) KWE_CheckUpdateRgn(AsPtr(q));
}

void DisposeAllWindows() {
  ManagerState& st = State();
  if (!st.initialised) return;
  // The list is the host's variable: only windows of ours are taken from it.
  while (WindowPeek p = ListHead()) {
    if (!DataOf(AsPtr(p))) break;
    DisposeWindow(AsPtr(p));
  }
  for (UpdateLevel& level : st.levels) {
    if (level.savedVis) DisposeRgn(level.savedVis);
    level = UpdateLevel{};
  }
  if (st.scratch) DisposeRgn(st.scratch);
  RgnHandle& gray = kwe::lowmem::At<RgnHandle>(kwe::lowmem::Slot::GrayRgn);
  if (gray) DisposeRgn(gray);
  gray = nullptr;
  for (HBRUSH& brush : st.frameBrushes) {
    if (brush) DeleteObject(brush);
    brush = nullptr;
  }
  ReleaseFrameBitmaps();
  st = ManagerState{};
}

}  // namespace kwe::windows

using namespace kwe::windows;

KWE_API void KWE_CALL InitWindows(void) {
  ManagerState& st = State();
  if (st.initialised) return;
  HDC dc = GetDC(kwe::TheSession().mainWindow);
  st.screenWidth = GetDeviceCaps(dc, HORZRES);
  st.screenHeight = GetDeviceCaps(dc, VERTRES);
  bool mono = GetDeviceCaps(dc, BITSPIXEL) == 1 && GetDeviceCaps(dc, PLANES) == 1;
  ReleaseDC(kwe::TheSession().mainWindow, dc);
  ListHead() = nullptr;
  st.selected = nullptr;
  RgnHandle gray = NewRgn();
  SetRectRgn(gray, 0, 0, SInt16(st.screenWidth), SInt16(st.screenHeight));
  kwe::lowmem::At<RgnHandle>(kwe::lowmem::Slot::GrayRgn) = gray;
  for (UpdateLevel& level : st.levels) level.savedVis = NewRgn();
  st.scratch = NewRgn();
  const int colours[3] = {COLOR_SCROLLBAR, COLOR_BTNFACE, COLOR_BTNSHADOW};
  for (int i = 0; i < 3; ++i) st.frameBrushes[i] = CreateSolidBrush(GetSysColor(colours[i]));
  LoadFrameBitmaps(mono);
  st.initialised = true;
}

KWE_API WindowPtr KWE_CALL GetNewWindow(SInt16 windowID, void* wStorage, WindowPtr behind) {
  return FromTemplate(windowID, wStorage, behind);
}

KWE_API void KWE_CALL DisposeWindow(WindowPtr theWindow) {
  WStateData* d = DataOf(theWindow);
  if (!d) return;
  bool callerStorage = d->moreFlags & kCallerStorageFlag;
  CloseWindo(theWindow);
  if (!callerStorage) DisposePtr(reinterpret_cast<Ptr>(theWindow));
}
