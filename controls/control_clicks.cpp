// A click Windows has tracked in a button or chosen in a pop-up of a
// Toolbox window reaches the application as the mouseDown and mouseUp it
// would have had on the Macintosh: its FindControl and TrackControl then
// answer the part. Dialogs' controls are the Dialog Manager's.
#include <windows.h>

#include "controls/control_manager.h"
#include "windows/window_manager.h"

namespace kwe::controls {

bool ControlClicked(HWND control, UINT notification, Rect* screenRect) {
  ControlHandle c = control ? ControlOfChild(control) : nullptr;
  if (!c || (windows::FlagsOf(Rec(c)->contrlOwner) & windows::kMadeForDialogFlag)) return false;
  bool click;
  switch (KindOf(c)) {
    case kPushButton:
    case kCheckBox:
    case kRadioButton:
      click = notification == BN_CLICKED || notification == BN_DOUBLECLICKED;
      break;
    case kPopUp:
      click = notification == CBN_CLOSEUP ||
              (notification == CBN_SELCHANGE && !SendMessageA(control, CB_GETDROPPEDSTATE, 0, 0));
      break;
    default: click = false; break;
  }
  if (!click || !screenRect) return click;
  RECT r;
  GetWindowRect(control, &r);
  *screenRect = Rect{SInt16(r.top), SInt16(r.left), SInt16(r.bottom), SInt16(r.right)};
  return true;
}

}  // namespace kwe::controls
