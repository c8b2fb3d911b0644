/* Text Services Manager. Windows' input methods work on the library's edit
   controls by themselves, so there are no documents to keep: the calls
   report themselves and answer noErr, and the event, menu and cursor calls
   answer false (not handled) so that the application handles them itself.
   No output parameter is written. */
#ifndef KWE_TEXTSERVICES_H
#define KWE_TEXTSERVICES_H

#include "Events.h"
#include "MacTypes.h"

typedef struct OpaqueTSMDocumentID* TSMDocumentID;
typedef OSType InterfaceTypeList[1];

KWE_API OSErr KWE_CALL InitTSMAwareApplication(void);
KWE_API OSErr KWE_CALL CloseTSMAwareApplication(void);
KWE_API OSErr KWE_CALL NewTSMDocument(SInt16 numOfInterface,
                                      InterfaceTypeList supportedInterfaceTypes,
                                      TSMDocumentID* idocID, SInt32 refcon);
KWE_API OSErr KWE_CALL DeleteTSMDocument(TSMDocumentID idocID);
KWE_API OSErr KWE_CALL ActivateTSMDocument(TSMDocumentID idocID);
KWE_API OSErr KWE_CALL DeactivateTSMDocument(TSMDocumentID idocID);
KWE_API OSErr KWE_CALL FixTSMDocument(TSMDocumentID idocID);
KWE_API OSErr KWE_CALL UseInputWindow(TSMDocumentID idocID, Boolean useWindow);
KWE_API Boolean KWE_CALL TSMEvent(EventRecord* event);
KWE_API Boolean KWE_CALL TSMMenuSelect(SInt32 menuResult);
KWE_API Boolean KWE_CALL SetTSMCursor(Point mousePos);

#endif
