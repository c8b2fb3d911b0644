/* Drag Manager. Drags between windows are Windows' own business (OLE drag and
   drop), so the calls report themselves and answer noErr without writing
   their output parameters; installed handlers are never called. */
#ifndef KWE_DRAG_H
#define KWE_DRAG_H

#include "MacTypes.h"

typedef UInt32 DragReference;
typedef UInt32 ItemReference;
typedef OSType FlavorType;
typedef UInt32 FlavorFlags;
typedef UInt32 DragAttributes;
typedef SInt16 DragTrackingMessage;

typedef OSErr(KWE_CALL* DragTrackingHandlerProcPtr)(DragTrackingMessage message,
                                                    WindowPtr theWindow, void* handlerRefCon,
                                                    DragReference theDrag);
typedef OSErr(KWE_CALL* DragReceiveHandlerProcPtr)(WindowPtr theWindow, void* handlerRefCon,
                                                   DragReference theDrag);

KWE_API OSErr KWE_CALL InstallTrackingHandler(DragTrackingHandlerProcPtr trackingHandler,
                                              WindowPtr theWindow, void* handlerRefCon);
KWE_API OSErr KWE_CALL InstallReceiveHandler(DragReceiveHandlerProcPtr receiveHandler,
                                             WindowPtr theWindow, void* handlerRefCon);
KWE_API OSErr KWE_CALL RemoveTrackingHandler(DragTrackingHandlerProcPtr trackingHandler,
                                             WindowPtr theWindow);
KWE_API OSErr KWE_CALL RemoveReceiveHandler(DragReceiveHandlerProcPtr receiveHandler,
                                            WindowPtr theWindow);
KWE_API OSErr KWE_CALL CountDragItems(DragReference theDrag, UInt16* numItems);
KWE_API OSErr KWE_CALL GetDragItemReferenceNumber(DragReference theDrag, UInt16 index,
                                                  ItemReference* theItemRef);
KWE_API OSErr KWE_CALL GetFlavorFlags(DragReference theDrag, ItemReference theItemRef,
                                      FlavorType theType, FlavorFlags* theFlags);
KWE_API OSErr KWE_CALL GetFlavorDataSize(DragReference theDrag, ItemReference theItemRef,
                                         FlavorType theType, Size* dataSize);
KWE_API OSErr KWE_CALL GetFlavorData(DragReference theDrag, ItemReference theItemRef,
                                     FlavorType theType, void* dataPtr, Size* dataSize,
                                     UInt32 dataOffset);
KWE_API OSErr KWE_CALL GetDragAttributes(DragReference theDrag, DragAttributes* flags);
KWE_API OSErr KWE_CALL GetDragMouse(DragReference theDrag, Point* mouse, Point* pinnedMouse);
KWE_API OSErr KWE_CALL ShowDragHilite(DragReference theDrag, RgnHandle hiliteFrame, Boolean inside);
KWE_API OSErr KWE_CALL HideDragHilite(DragReference theDrag);

#endif
