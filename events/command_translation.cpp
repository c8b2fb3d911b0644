// WM_COMMAND: menu and accelerator commands are handed to the Menu Manager;
// a click on a control of a Toolbox window or a library dialog becomes a
// mouseDown and a mouseUp inside the control, which FindControl,
// ModalDialog and DialogSelect then find.
#include <windows.h>

#include "KWEEvents.h"
#include "events/event_queue.h"
#include "frame/subsystems.h"

KWE_API void KWE_CALL KWE_EventCommand(HWND dialog, UINT, WPARAM wParam, HWND control) {
  using namespace kwe;
  if (!control) {
    menus::RecordMenuCommand(static_cast<UInt32>(wParam));
    return;
  }
  menus::RecordMenuCommand(0);
  Rect clickRect;
  if (controls::ControlClicked(control, HIWORD(wParam), &clickRect) ||
      dialogs::ControlCommand(dialog, control, HIWORD(wParam), &clickRect))
    events::PostSyntheticClick(clickRect);
}
