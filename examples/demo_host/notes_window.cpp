#include "notes_window.h"

#include <algorithm>

#include "Controls.h"
#include "Fonts.h"
#include "Quickdraw.h"
#include "TextEdit.h"

namespace {

constexpr SInt16 kBar = 16;
WindowPtr g_window = nullptr;
TEHandle g_text = nullptr;
ControlHandle g_bar = nullptr;

const char kWelcome[] =
    "Notes: a TextEdit field drawn by the library in this window. Click to place the caret, "
    "drag or double-click to select, type to replace the selection; Command-X, C and V cut, "
    "copy and paste through the TextEdit scrap and the clipboard.\r\r"
    "The scroll bar moves the text with TEScroll; TEAutoView keeps the caret in view while "
    "you type.\r";

// The scroll bar's range: the text's height beyond the view.
void AdjustBar() {
  const TERec& r = **g_text;
  SInt16 lines = SInt16(r.nLines + (r.teLength && (*r.hText)[r.teLength - 1] == '\r'));
  int over = lines * r.lineHeight - (r.viewRect.bottom - r.viewRect.top);
  SetControlMaximum(g_bar, SInt16(std::max(0, over)));
  SetControlValue(g_bar, SInt16(r.viewRect.top - r.destRect.top));
}

void ScrollTo(SInt16 value) {
  const TERec& r = **g_text;
  TEScroll(0, SInt16((r.viewRect.top - r.destRect.top) - value), g_text);
}

void KWE_CALL ScrollAction(ControlHandle c, SInt16 part) {
  SInt16 line = (**g_text).lineHeight;
  SInt16 page = SInt16((**g_text).viewRect.bottom - (**g_text).viewRect.top - line);
  SInt16 step = part == inUpButton     ? SInt16(-line)
                : part == inDownButton ? line
                : part == inPageUp     ? SInt16(-page)
                : part == inPageDown   ? page
                                       : 0;
  SetControlValue(c, SInt16(GetControlValue(c) + step));
  ScrollTo(GetControlValue(c));
}

std::string Click(const EventRecord& e) {
  SetPort(g_window);
  Point local = e.where;
  GlobalToLocal(&local);
  ControlHandle c = nullptr;
  if (SInt16 part = FindControl(local, g_window, &c)) {
    if (part == inThumb) {
      TrackControl(c, local, nullptr);
      ScrollTo(GetControlValue(c));
    } else {
      TrackControl(c, local, reinterpret_cast<ProcPtr>(ScrollAction));
    }
    return "scroll bar";
  }
  if (PtInRect(local, &(**g_text).viewRect)) {
    TEClick(local, (e.modifiers & shiftKey) != 0, g_text);
    AdjustBar();
    return "TEClick";
  }
  return "content";
}

std::string Key(const EventRecord& e) {
  char c = char(e.message & charCodeMask);
  SetPort(g_window);
  if (e.modifiers & cmdKey) {
    switch (c | 0x20) {
      case 'x': TECut(g_text); break;
      case 'c': TECopy(g_text); break;
      case 'v': TEPaste(g_text); break;
      default: return "";
    }
  } else {
    TEKey(SInt16(UInt8(c)), g_text);
  }
  AdjustBar();
  return "TEKey";
}

bool Mine(const EventRecord& e) {
  return g_window && e.message == UInt32(reinterpret_cast<uintptr_t>(g_window));
}

}  // namespace

void OpenNotesWindow(const Rect& bounds) {
  g_window = NewWindow(nullptr, &bounds, reinterpret_cast<const UInt8*>("\x05Notes"), true,
                       noGrowDocProc, reinterpret_cast<WindowPtr>(-1), true, 2);
  if (!g_window) return;
  SetPort(g_window);
  TextFont(geneva);
  TextSize(10);
  const Rect& port = g_window->portRect;
  Rect bar{SInt16(port.top - 1), SInt16(port.right - kBar + 1), SInt16(port.bottom + 1),
           SInt16(port.right + 1)};
  g_bar = NewControl(g_window, &bar, nullptr, true, 0, 0, 0, scrollBarProc, 0);
  Rect view{SInt16(port.top + 4), SInt16(port.left + 4), SInt16(port.bottom - 4),
            SInt16(port.right - kBar - 4)};
  g_text = TENew(&view, &view);
  TEAutoView(true, g_text);
  TEInsert(kWelcome, sizeof kWelcome - 1, g_text);
  for (char c : "Typed with TEKey.")
    if (c) TEKey(SInt16(c), g_text);
  TEActivate(g_text);
  AdjustBar();
}

void CloseNotesWindow() {
  if (g_text) TEDispose(g_text);
  if (g_window) DisposeWindow(g_window);
  g_text = nullptr;
  g_window = nullptr;
}

std::string HandleNotesEvent(const EventRecord& e) {
  if (!g_window) return "";
  switch (e.what) {
    case nullEvent:
      if (FrontWindow() == g_window) TEIdle(g_text);
      return "";
    case updateEvt:
      if (!Mine(e)) return "";
      SetPort(g_window);
      BeginUpdate(g_window);
      EraseRect(&g_window->portRect);
      TEUpdate(&g_window->portRect, g_text);
      DrawControls(g_window);
      EndUpdate(g_window);
      return " updateEvt 'Notes';";
    case activateEvt:
      if (!Mine(e)) return "";
      SetPort(g_window);
      (e.modifiers & activeFlag) ? TEActivate(g_text) : TEDeactivate(g_text);
      return "";
    case mouseDown: {
      WindowPtr w = nullptr;
      short part = FindWindow(e.where, &w);
      if (w != g_window) return "";
      if (part != inContent) return "";
      if (w != FrontWindow()) {
        SelectWindow(w);
        return " mouseDown (SelectWindow) 'Notes';";
      }
      return " mouseDown (" + Click(e) + ") 'Notes';";
    }
    case keyDown:
    case autoKey:
      if (FrontWindow() != g_window) return "";
      {
        std::string said = Key(e);
        return said.empty() ? "" : " keyDown (" + said + ") 'Notes';";
      }
    default: return "";
  }
}
