// Making a control: the record linked into its window's list and the Win32
// child window that stands for it, made together; and 'CNTL' templates.
#include <windows.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "Memory.h"
#include "Resources.h"
#include "controls/control_manager.h"
#include "controls/control_templates.h"
#include "frame/library_fonts.h"
#include "frame/session.h"
#include "memory/character_conversion.h"
#include "windows/window_manager.h"

namespace kwe::controls {
namespace {

constexpr ResType kControlTemplateType = 0x434E544C;    // 'CNTL'
constexpr ResType kControlDefinitionType = 0x43444546;  // 'CDEF'
constexpr SInt16 kLookUpCodeResource = 3;
constexpr SInt16 kPopUpProcId = popupMenuProc;

struct ChildClass {
  const char* name;
  DWORD style;
  DWORD exStyle;
  WNDPROC procedure;
  WNDPROC* previous;
};

// The Win32 form of the title: Macintosh to ANSI, and "&" doubled unless the
// session takes it as the mnemonic mark. A CDEF control's text is its handle
// in decimal, by which its window procedure finds it.
void ChildText(ControlHandle c, char* out, size_t size) {
  if (FieldsOf(c).hasCdef) {
    std::snprintf(out, size, "%" PRIuPTR, reinterpret_cast<uintptr_t>(c));
    return;
  }
  const UInt8* title = Rec(c)->contrlTitle;
  size_t n = 0;
  bool doubleAmpersands = !SessionFlag(kweFlagAmpersandAsMnemonic);
  for (size_t i = 1; i <= title[0] && n + 2 < size; ++i) {
    UInt8 ansi;
    text::MacToAnsiBytes(title + i, &ansi, 1);
    out[n++] = char(ansi);
    if (ansi == '&' && doubleAmpersands) out[n++] = '&';
  }
  out[n] = 0;
}

void Subclass(HWND child, const ChildClass& k) {
  WNDPROC old = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(child, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(k.procedure)));
  if (!*k.previous) *k.previous = old;
}

SInt16 Clamp(SInt16 value, SInt16 min, SInt16 max) { return std::max(min, std::min(value, max)); }

}  // namespace

void PushTitle(ControlHandle c) {
  HWND child = ChildOf(c);
  if (!child) return;
  char text[2 * 256];
  ChildText(c, text, sizeof text);
  SetWindowTextA(child, text);
}

void EnableScrollBar(ControlHandle c) {
  HWND child = ChildOf(c);
  bool on = Rec(c)->contrlHilite != kInactive && Rec(c)->contrlMin < Rec(c)->contrlMax;
  if (child && bool(IsWindowEnabled(child)) != on) EnableWindow(child, on);
}

ControlHandle Create(WindowPtr w, const Rect* bounds, ConstStr255Param title, bool visible,
                     SInt16 value, SInt16 min, SInt16 max, SInt16 procID, SInt32 refCon,
                     const CreationContext& context) {
  HWND owner = windows::HwndOf(w);
  if (!owner || !bounds) return nullptr;
  const Session& session = TheSession();
  int fontIndex = session.dialogFont;
  if (procID & useWFont) {
    fontIndex = kBoldDialogFont;
    procID = SInt16(procID & ~useWFont);
  }
  const LibraryFont& font = session.fonts[fontIndex];
  int fontHeight = font.ascent + font.descent;
  Rect r = *bounds;
  if (procID == radioButProc) {
    r.top = SInt16(r.top - 2);
    r.bottom = SInt16(r.bottom - 2);
  }

  ControlHandle c = context.existing;
  if (!c) {
    c = reinterpret_cast<ControlHandle>(NewHandleClear(kControlHandleSize));
    if (!c) return nullptr;
  }
  ControlPtr p = Rec(c);
  p->contrlRect = r;
  p->contrlVis = visible ? kVisible : 0;
  p->contrlMin = min;
  p->contrlMax = max;
  p->contrlValue = Clamp(value, min, max);
  p->contrlRfCon = refCon;
  if (!context.existing) {
    p->contrlOwner = w;
    p->contrlHilite = 0;
    p->contrlDefProc = nullptr;
    p->contrlData = nullptr;
    p->contrlAction = nullptr;
  }
  size_t length = title ? std::min<size_t>(title[0], kMaxTitleLength) : 0;
  p->contrlTitle[0] = UInt8(length);
  if (length) std::memcpy(p->contrlTitle + 1, title + 1, length);
  LibraryFields fields;
  StoreFields(c, fields);
  RecordPortOrigin(c);

  DWORD style = WS_CHILD | (visible ? WS_VISIBLE : 0);
  int width = r.right - r.left, height = r.bottom - r.top;
  // A dialog item's child carries its item number, by which the Dialog
  // Manager and GetDlgItem find it.
  int id = context.itemNumber ? context.itemNumber : refCon & 0xFF;
  bool button = true;
  ManagerState& st = State();
  ChildClass k{"button", BS_PUSHBUTTON, 0, K_ButtonWndProc, &st.buttonProc};
  intptr_t kind = kPushButton;
  ControlDefProcPtr cdef = nullptr;
  if (procID == checkBoxProc) {
    kind = kCheckBox;
    k.style = BS_CHECKBOX;
    width += 2;
  } else if (procID == radioButProc) {
    kind = kRadioButton;
    k.style = BS_RADIOBUTTON;
    width += 1;
  } else if (procID == scrollBarProc) {
    kind = kScrollBar;
    button = false;
    k = ChildClass{"scrollbar", SBS_HORZ, 0, K_ScrollBarWndProc, &st.scrollBarProc};
    WStateData* data = windows::DataOf(w);
    if (height < width) {
      data->flags |= windows::kHorizontalScrollBarFlag;
    } else {
      k.style = SBS_VERT;
      data->flags |= windows::kVerticalScrollBarFlag;
    }
  } else if (context.comboBox || (procID & ~15) == kPopUpProcId) {
    kind = kPopUp;
    button = false;
    k = ChildClass{"combobox", CBS_DROPDOWNLIST | WS_VSCROLL, 0, K_ComboBoxWndProc,
                   &st.comboBoxProc};
    if (session.version.NewShell()) k.exStyle = WS_EX_CLIENTEDGE;
    height = std::max(height, fontHeight + 2);
  } else if (procID != pushButProc) {
    cdef = reinterpret_cast<ControlDefProcPtr>(
        KWE_CodeResource(kLookUpCodeResource, kControlDefinitionType, SInt16(procID >> 4), 0));
  }
  if (cdef) {
    p->contrlDefProc = reinterpret_cast<Handle>(cdef);
    fields.hasCdef = true;
    fields.variation = UInt8(procID & 15);
    k.style = BS_OWNERDRAW;
    k.procedure = K_CDEFWndProc;
    id |= kCdefIdMark;
  } else {
    p->contrlDefProc = reinterpret_cast<Handle>(kind);
  }
  if (button) height = std::max(height, fontHeight + 2);
  fields.portTop = w->portRect.top;
  fields.portLeft = w->portRect.left;
  StoreFields(c, fields);

  char text[2 * 256];
  ChildText(c, text, sizeof text);
  POINT at = ToClient(c, r.left, r.top);
  HWND child =
      CreateWindowExA(k.exStyle, k.name, text, style | k.style, at.x, at.y, width, height, owner,
                      reinterpret_cast<HMENU>(intptr_t(id)), session.instance, nullptr);
  if (!child) {
    if (!context.existing) DisposeHandle(reinterpret_cast<Handle>(c));
    return nullptr;
  }
  Subclass(child, k);
  fields.window = child;
  StoreFields(c, fields);
  if (!context.existing) {
    p->nextControl = windows::Peek(w)->controlList;
    windows::Peek(w)->controlList = c;
  }

  if (kind != kScrollBar && font.font)
    SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(font.font), FALSE);
  if (cdef) CallCdef(c, initCntl, 0);
  if (kind == kPopUp && !cdef) {
    FillPopUp(c, child);
    SendMessageA(child, CB_SETEXTENDEDUI, 1, 0);
    SendMessageA(child, CB_SETITEMHEIGHT, WPARAM(-1), std::max(fontHeight + 2, height));
    p->contrlValue = Clamp(value, p->contrlMin, p->contrlMax);
  }
  if (kind == kScrollBar) {
    SetScrollRange(child, SB_CTL, min, max, FALSE);
    EnableScrollBar(c);
  }
  // A new button is unchecked and unpressed already: each message it is
  // sent costs a repaint request.
  if (p->contrlValue != 0 || kind == kScrollBar || kind == kPopUp || cdef) PushValue(c);
  return c;
}

}  // namespace kwe::controls

using namespace kwe::controls;

KWE_API ControlHandle KWE_CALL NewControl(WindowPtr theWindow, const Rect* boundsRect,
                                          ConstStr255Param title, Boolean visible, SInt16 value,
                                          SInt16 min, SInt16 max, SInt16 procID, SInt32 refCon) {
  return Create(theWindow, boundsRect, title, visible != 0, value, min, max, procID, refCon,
                CreationContext{});
}

KWE_API ControlHandle KWE_CALL GetNewControl(SInt16 controlID, WindowPtr owner) {
  if (!kwe::windows::HwndOf(owner)) return nullptr;
  Handle h = GetResource(kControlTemplateType, controlID);
  if (!h || !*h) return nullptr;
  SInt8 state = HGetState(h);
  HNoPurge(h);
  ControlTemplate t;
  bool whole =
      ReadControlTemplate(reinterpret_cast<const UInt8*>(*h), size_t(GetHandleSize(h)), &t);
  HSetState(h, state);
  ReleaseResource(h);
  if (!whole) return nullptr;
  return NewControl(owner, &t.bounds, t.title, t.visible, t.value, t.min, t.max, t.procID,
                    t.refCon);
}
