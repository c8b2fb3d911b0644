// Menu, Control and Window Manager colour records, TextEdit features, print
// jobs, the Chooser and terminals: on Windows these are USER's, the printer
// driver's or nobody's. Each call reports its own name (__func__ is the
// exported name) unless noted, and writes no output parameter.
#include "Printing.h"
#include "UnsupportedCalls.h"
#include "frame/unsupported.h"

KWE_API MCTableHandle KWE_CALL GetMCInfo(void) {
  return kwe::Unsupported(__func__, MCTableHandle{});
}

KWE_API void KWE_CALL SetMCInfo(MCTableHandle) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL SetMCEntries(SInt16, MCTablePtr) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL DisposeMCInfo(MCTableHandle) { kwe::Unsupported("DispMCInfo"); }
KWE_API void KWE_CALL FlashMenuBar(SInt16) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL InvalMenuBar(void) { kwe::Unsupported(__func__); }

KWE_API Boolean KWE_CALL GetAuxiliaryControlRecord(ControlHandle, AuxCtlHandle*) {
  return kwe::Unsupported("GetAuxCtl", false);
}

KWE_API void KWE_CALL SetControlColor(ControlHandle, CCTabHandle) {
  kwe::Unsupported("SetCtlColor");
}

KWE_API Boolean KWE_CALL GetAuxWin(WindowPtr, AuxWinHandle*) {
  return kwe::Unsupported(__func__, false);
}

KWE_API SInt16 KWE_CALL TEFeatureFlag(SInt16, SInt16, TEHandle) {
  return kwe::Unsupported(__func__, SInt16{0});
}

KWE_API void KWE_CALL PrJobMerge(THPrint, THPrint) { kwe::Unsupported(__func__); }
KWE_API Boolean KWE_CALL SetChooserAlert(Boolean) { return kwe::Unsupported(__func__, false); }

KWE_API void KWE_CALL TMSetSelection(TermHandle, const TMSelection*, TMSelTypes) {
  kwe::Unsupported(__func__);
}
