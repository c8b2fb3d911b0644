// The library's own procedures behind the patchable calls. Each manager
// defines its own as it is built; frame/managers_pending.cpp holds the rest.
#pragma once
#include "Dialogs.h"
#include "Events.h"
#include "MacTypes.h"

namespace kwe::events {
Boolean KWE_CALL GetNextEventDefault(EventMask mask, EventRecord* event);
Boolean KWE_CALL WaitNextEventDefault(EventMask mask, EventRecord* event, UInt32 sleep,
                                      RgnHandle mouseRgn);
Boolean KWE_CALL EventAvailDefault(EventMask mask, EventRecord* event);
void KWE_CALL SystemTaskDefault();
Boolean KWE_CALL StillDownDefault();
Boolean KWE_CALL WaitMouseUpDefault();
// The work of the guarded exports Button and GetMouse.
Boolean ButtonWork();
void GetMouseWork(Point* where);
}  // namespace kwe::events

namespace kwe::quickdraw {
void KWE_CALL SetOriginDefault(SInt16 h, SInt16 v);
void KWE_CALL SetCursorDefault(const Cursor* cursor);
}  // namespace kwe::quickdraw

namespace kwe::windows {
void KWE_CALL BeginUpdateDefault(WindowPtr window);
void KWE_CALL EndUpdateDefault(WindowPtr window);
void KWE_CALL InvalRectDefault(const Rect* r);
void KWE_CALL InvalRgnDefault(RgnHandle rgn);
WindowPtr KWE_CALL NewWindowDefault(void* storage, const Rect* bounds, ConstStr255Param title,
                                    Boolean visible, SInt16 procID, WindowPtr behind,
                                    Boolean goAway, SInt32 refCon);
WindowPtr KWE_CALL NewCWindowDefault(void* storage, const Rect* bounds, ConstStr255Param title,
                                     Boolean visible, SInt16 procID, WindowPtr behind,
                                     Boolean goAway, SInt32 refCon);
void KWE_CALL ShowWindowDefault(WindowPtr window);
void KWE_CALL HideWindowDefault(WindowPtr window);
void KWE_CALL SelectWindowDefault(WindowPtr window);
void KWE_CALL CloseWindowDefault(WindowPtr window);
WindowPtr KWE_CALL FrontWindowDefault();
}  // namespace kwe::windows

namespace kwe::dialogs {
void KWE_CALL ModalDialogDefault(ModalFilterProcPtr filter, SInt16* itemHit);
}

namespace kwe::menus {
void KWE_CALL DrawMenuBarDefault();
void KWE_CALL HiliteMenuDefault(SInt16 menuID);
SInt32 PopUpMenuSelectWork(MenuHandle menu, SInt16 top, SInt16 left, SInt16 popUpItem);
}  // namespace kwe::menus
