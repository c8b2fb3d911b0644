// The calls under the names of the original Toolbox interface, which older
// sources and their import libraries use.
#include "Controls.h"

KWE_API void KWE_CALL UpdtControl(WindowPtr theWindow, RgnHandle updateRgn) {
  UpdateControls(theWindow, updateRgn);
}
KWE_API SInt16 KWE_CALL GetCtlValue(ControlHandle c) { return GetControlValue(c); }
KWE_API void KWE_CALL SetCtlValue(ControlHandle c, SInt16 v) { SetControlValue(c, v); }
KWE_API SInt16 KWE_CALL GetCtlMin(ControlHandle c) { return GetControlMinimum(c); }
KWE_API void KWE_CALL SetCtlMin(ControlHandle c, SInt16 v) { SetControlMinimum(c, v); }
KWE_API SInt16 KWE_CALL GetCtlMax(ControlHandle c) { return GetControlMaximum(c); }
KWE_API void KWE_CALL SetCtlMax(ControlHandle c, SInt16 v) { SetControlMaximum(c, v); }
KWE_API void KWE_CALL GetCTitle(ControlHandle c, Str255 title) { GetControlTitle(c, title); }
KWE_API void KWE_CALL SetCTitle(ControlHandle c, ConstStr255Param title) {
  SetControlTitle(c, title);
}
KWE_API SInt32 KWE_CALL GetCRefCon(ControlHandle c) { return GetControlReference(c); }
KWE_API void KWE_CALL SetCRefCon(ControlHandle c, SInt32 data) { SetControlReference(c, data); }
KWE_API ProcPtr KWE_CALL GetCtlAction(ControlHandle c) { return GetControlAction(c); }
KWE_API void KWE_CALL SetCtlAction(ControlHandle c, ProcPtr action) { SetControlAction(c, action); }
KWE_API SInt16 KWE_CALL GetCVariant(ControlHandle c) { return GetControlVariant(c); }
