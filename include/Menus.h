/* Menu Manager. The calls below are patchable through the trap table; the
   rest of the manager joins them as it is built. */
#ifndef KWE_MENUS_H
#define KWE_MENUS_H

#include "MacTypes.h"

/* DrawMenuBar: exported shortened, see KWENames.h. */
KWE_API void KWE_CALL DrawMenuBa(void);
KWE_API void KWE_CALL HiliteMenu(SInt16 menuID);
KWE_API SInt32 KWE_CALL PopUpMenuSelect(MenuHandle menu, SInt16 top, SInt16 left, SInt16 popUpItem);

#endif
