// Stand-ins for managers that are not built yet. The patchable calls report
// themselves like unsupported calls, so a porting developer sees each use;
// the start-up and shut-down steps do the least that keeps a session whole.
// Each manager removes its entries here as it takes them over.
#include <windows.h>

#include "frame/subsystems.h"
#include "frame/trap_defaults.h"
#include "frame/unsupported.h"

namespace kwe::windows {
void DisposeAllWindows() {}
// No Toolbox windows yet, so no update or activate event is ever due.
bool NextUpdateOrActivate(EventMask, EventRecord*, WindowPtr*) { return false; }
LRESULT NonClientMessage(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
  return DefWindowProcA(window, msg, wParam, lParam);
}
HWND WindowHandleOf(WindowPtr) { return nullptr; }
void KWE_CALL BeginUpdateDefault(WindowPtr) { Unsupported("BeginUpdate"); }
void KWE_CALL EndUpdateDefault(WindowPtr) { Unsupported("EndUpdate"); }
void KWE_CALL InvalRectDefault(const Rect*) { Unsupported("InvalRect"); }
void KWE_CALL InvalRgnDefault(RgnHandle) { Unsupported("InvalRgn"); }
WindowPtr KWE_CALL NewWindowDefault(void*, const Rect*, ConstStr255Param, Boolean, SInt16,
                                    WindowPtr, Boolean, SInt32) {
  return Unsupported("NewWindow", WindowPtr(nullptr));
}
WindowPtr KWE_CALL NewCWindowDefault(void*, const Rect*, ConstStr255Param, Boolean, SInt16,
                                     WindowPtr, Boolean, SInt32) {
  return Unsupported("NewCWindow", WindowPtr(nullptr));
}
void KWE_CALL ShowWindowDefault(WindowPtr) { Unsupported("ShowWindow"); }
void KWE_CALL HideWindowDefault(WindowPtr) { Unsupported("HideWindow"); }
void KWE_CALL SelectWindowDefault(WindowPtr) { Unsupported("SelectWindow"); }
void KWE_CALL CloseWindowDefault(WindowPtr) { Unsupported("CloseWindow"); }
WindowPtr KWE_CALL FrontWindowDefault() { return Unsupported("FrontWindow", WindowPtr(nullptr)); }
}  // namespace kwe::windows

namespace kwe::dialogs {
void ResetErrorSound() {}
bool InModalDialog() { return false; }
int DialogControlKind(HWND, HWND* dialog) {
  if (dialog) *dialog = nullptr;
  return kNotDialogControl;
}
bool ControlCommand(HWND, HWND, UINT, Rect*) { return false; }
void KWE_CALL ModalDialogDefault(ModalFilterProcPtr, SInt16* itemHit) {
  if (itemHit) *itemHit = 0;
  Unsupported("ModalDialog");
}
}  // namespace kwe::dialogs

namespace kwe::menus {
void DestroyAllMenus() {}
void RecordMenuCommand(UInt32) {}
void KWE_CALL DrawMenuBarDefault() { Unsupported("DrawMenuBar"); }
void KWE_CALL HiliteMenuDefault(SInt16) { Unsupported("HiliteMenu"); }
SInt32 PopUpMenuSelectWork(MenuHandle, SInt16, SInt16, SInt16) {
  return Unsupported("PopUpMenuSelect", SInt32(0));
}
}  // namespace kwe::menus
