// Text Services Manager: Windows' input methods serve the library's edit
// controls directly, so there are no TSM documents. Each call reports its own
// name (__func__ is the exported name); the document calls answer noErr and
// the event, menu and cursor calls false, leaving the work to the application.
#include "TextServices.h"
#include "frame/unsupported.h"

KWE_API OSErr KWE_CALL InitTSMAwareApplication(void) { return kwe::Unsupported(__func__, noErr); }
KWE_API OSErr KWE_CALL CloseTSMAwareApplication(void) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL NewTSMDocument(SInt16, InterfaceTypeList, TSMDocumentID*, SInt32) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL DeleteTSMDocument(TSMDocumentID) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL ActivateTSMDocument(TSMDocumentID) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL DeactivateTSMDocument(TSMDocumentID) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL FixTSMDocument(TSMDocumentID) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL UseInputWindow(TSMDocumentID, Boolean) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API Boolean KWE_CALL TSMEvent(EventRecord*) { return kwe::Unsupported(__func__, false); }
KWE_API Boolean KWE_CALL TSMMenuSelect(SInt32) { return kwe::Unsupported(__func__, false); }
KWE_API Boolean KWE_CALL SetTSMCursor(Point) { return kwe::Unsupported(__func__, false); }
