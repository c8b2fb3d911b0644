// Values, range, title and the application's fields, kept in step with the
// child window: the check state of a button, the range and position of a
// scroll bar, the selection of a combo box.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "controls/control_manager.h"

namespace kwe::controls {
namespace {

bool Valid(ControlHandle c) { return c && *c; }

}  // namespace

void PushValue(ControlHandle c) {
  HWND child = ChildOf(c);
  if (!child) return;
  SInt16 value = Rec(c)->contrlValue;
  switch (KindOf(c)) {
    case kPushButton: SendMessageA(child, BM_SETSTATE, value != 0, 0); break;
    case kCheckBox:
    case kRadioButton: SendMessageA(child, BM_SETCHECK, WPARAM(value), 0); break;
    case kScrollBar: SetScrollPos(child, SB_CTL, value, TRUE); break;
    case kPopUp: SendMessageA(child, CB_SETCURSEL, WPARAM(value - 1), 0); break;
    default: CallCdef(c, drawCntl, 0); break;
  }
}

}  // namespace kwe::controls

using namespace kwe::controls;

KWE_API SInt16 KWE_CALL GetControlValue(ControlHandle theControl) {
  if (!Valid(theControl)) return 0;
  if (KindOf(theControl) == kPopUp && ChildOf(theControl))
    return SInt16(SendMessageA(ChildOf(theControl), CB_GETCURSEL, 0, 0) + 1);
  return Rec(theControl)->contrlValue;
}

KWE_API void KWE_CALL SetControlValue(ControlHandle theControl, SInt16 newValue) {
  if (!Valid(theControl)) return;
  ControlPtr p = Rec(theControl);
  p->contrlValue = std::max(p->contrlMin, std::min(newValue, p->contrlMax));
  PushValue(theControl);
}

KWE_API SInt16 KWE_CALL GetControlMinimum(ControlHandle theControl) {
  return Valid(theControl) ? Rec(theControl)->contrlMin : 0;
}

KWE_API SInt16 KWE_CALL GetControlMaximum(ControlHandle theControl) {
  return Valid(theControl) ? Rec(theControl)->contrlMax : 0;
}

namespace kwe::controls {
namespace {

// The scroll bar's position is left where it is: the value is only kept
// inside the new range.
void RangeChanged(ControlHandle c) {
  ControlPtr p = Rec(c);
  intptr_t kind = KindOf(c);
  if (kind == kScrollBar) {
    p->contrlValue = std::max(p->contrlMin, std::min(p->contrlValue, p->contrlMax));
    HWND child = ChildOf(c);
    if (p->contrlMax > p->contrlMin) {
      // A new range enables the bar in Windows' eyes: an inactive one is
      // disabled again after it.
      SetScrollRange(child, SB_CTL, p->contrlMin, p->contrlMax, TRUE);
      EnableScrollBar(c);
    } else {
      SetScrollRange(child, SB_CTL, 0, 0, FALSE);
      if (IsWindowEnabled(child)) EnableWindow(child, FALSE);
    }
  } else if (kind == -1) {
    CallCdef(c, drawCntl, 0);
  }
}

}  // namespace
}  // namespace kwe::controls

KWE_API void KWE_CALL SetControlMinimum(ControlHandle theControl, SInt16 newMinimum) {
  if (!Valid(theControl) || Rec(theControl)->contrlMin == newMinimum) return;
  Rec(theControl)->contrlMin = newMinimum;
  RangeChanged(theControl);
}

KWE_API void KWE_CALL SetControlMaximum(ControlHandle theControl, SInt16 newMaximum) {
  if (!Valid(theControl) || Rec(theControl)->contrlMax == newMaximum) return;
  Rec(theControl)->contrlMax = newMaximum;
  RangeChanged(theControl);
}

KWE_API void KWE_CALL GetControlTitle(ControlHandle theControl, Str255 title) {
  if (!title) return;
  title[0] = 0;
  if (Valid(theControl))
    std::memcpy(title, Rec(theControl)->contrlTitle, size_t(Rec(theControl)->contrlTitle[0]) + 1);
}

// A title longer than 245 characters is cut: the record's last ten bytes
// hold the library's fields.
KWE_API void KWE_CALL SetControlTitle(ControlHandle theControl, ConstStr255Param title) {
  if (!Valid(theControl)) return;
  size_t length = title ? std::min<size_t>(title[0], kMaxTitleLength) : 0;
  Rec(theControl)->contrlTitle[0] = UInt8(length);
  if (length) std::memcpy(Rec(theControl)->contrlTitle + 1, title + 1, length);
  if (KindOf(theControl) == -1)
    CallCdef(theControl, drawCntl, 0);
  else if (KindOf(theControl) != kPopUp)
    PushTitle(theControl);
}

KWE_API SInt32 KWE_CALL GetControlReference(ControlHandle theControl) {
  return Valid(theControl) ? Rec(theControl)->contrlRfCon : 0;
}

KWE_API void KWE_CALL SetControlReference(ControlHandle theControl, SInt32 data) {
  if (Valid(theControl)) Rec(theControl)->contrlRfCon = data;
}

KWE_API ProcPtr KWE_CALL GetControlAction(ControlHandle theControl) {
  return Valid(theControl) ? Rec(theControl)->contrlAction : nullptr;
}

KWE_API void KWE_CALL SetControlAction(ControlHandle theControl, ProcPtr actionProc) {
  if (Valid(theControl)) Rec(theControl)->contrlAction = actionProc;
}

KWE_API SInt16 KWE_CALL GetControlVariant(ControlHandle theControl) {
  return Valid(theControl) ? FieldsOf(theControl).variation : 0;
}

KWE_API MenuHandle KWE_CALL KWE_GetControlPopUpMenu(ControlHandle theControl) {
  return PopUpMenuOf(theControl);
}
