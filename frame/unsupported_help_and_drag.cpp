// Help Manager and Drag Manager. Balloon help is silent: applications ask
// about balloons all the time, and a report each time would bury the rest.
// The Drag Manager's calls report their own names (__func__ is the exported
// name); Windows' own drag and drop never reaches them.
#include "Balloons.h"
#include "Drag.h"
#include "frame/unsupported.h"

KWE_API OSErr KWE_CALL HMGetHelpMenuHandle(MenuHandle*) { return noErr; }
KWE_API OSErr KWE_CALL HMShowBalloon(const HMMessageRecord*, Point, Rect*, Ptr, SInt16, SInt16,
                                     SInt16) {
  return noErr;
}
KWE_API OSErr KWE_CALL HMRemoveBalloon(void) { return noErr; }
KWE_API OSErr KWE_CALL HMGetIndHelpMsg(ResType, SInt16, SInt16, SInt16, UInt32*, Point*, Rect*,
                                       SInt16*, SInt16*, HMMessageRecord*, SInt16*) {
  return noErr;
}
KWE_API Boolean KWE_CALL HMGetBalloons(void) { return false; }
KWE_API Boolean KWE_CALL HMIsBalloon(void) { return false; }

KWE_API OSErr KWE_CALL InstallTrackingHandler(DragTrackingHandlerProcPtr, WindowPtr, void*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL InstallReceiveHandler(DragReceiveHandlerProcPtr, WindowPtr, void*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL RemoveTrackingHandler(DragTrackingHandlerProcPtr, WindowPtr) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL RemoveReceiveHandler(DragReceiveHandlerProcPtr, WindowPtr) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL CountDragItems(DragReference, UInt16*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL GetDragItemReferenceNumber(DragReference, UInt16, ItemReference*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL GetFlavorFlags(DragReference, ItemReference, FlavorType, FlavorFlags*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL GetFlavorDataSize(DragReference, ItemReference, FlavorType, Size*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL GetFlavorData(DragReference, ItemReference, FlavorType, void*, Size*,
                                     UInt32) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL GetDragAttributes(DragReference, DragAttributes*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL GetDragMouse(DragReference, Point*, Point*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL ShowDragHilite(DragReference, RgnHandle, Boolean) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL HideDragHilite(DragReference) { return kwe::Unsupported(__func__, noErr); }
