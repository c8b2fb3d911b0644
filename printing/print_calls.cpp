// Opening and closing the Printing Manager, its error, PrGeneral and the
// printer driver's low-level calls.
#include <windows.h>

#include <algorithm>

#include "Printing.h"
#include "frame/unsupported.h"
#include "printing/print_job.h"
#include "printing/printer.h"

namespace kwe::printing {

namespace {

constexpr SInt16 kLowestResolution = 25;
constexpr SInt16 kDriverVersion = 0x0300;

// The printer's resolutions: any from 25 dots per inch to its own, the
// Macintosh's 72 and the printer's own listed.
void GetResolutions(TGetRslBlk& block) {
  TPrint probe{};
  probe.prInfo.iHRes = probe.prInfo.iVRes = 72;
  PageGeometry g = CurrentGeometry(probe);
  SInt16 x = static_cast<SInt16>(std::max(g.dpiX, 72));
  SInt16 y = static_cast<SInt16>(std::max(g.dpiY, 72));
  block.iRgType = RgType1;
  block.xRslRg = TRslRg{kLowestResolution, x};
  block.yRslRg = TRslRg{kLowestResolution, y};
  block.rgRslRec[0] = TRslRec{72, 72};
  block.iRslRecCnt = 1;
  if (x != 72 || y != 72) block.rgRslRec[block.iRslRecCnt++] = TRslRec{x, y};
  block.iError = noErr;
}

void SetResolution(TSetRslBlk& block) {
  if (!RecordUsable(block.hPrint)) {
    block.iError = paramErr;
    return;
  }
  TGetRslBlk range{};
  GetResolutions(range);
  if (block.iXRsl < range.xRslRg.iMin || block.iXRsl > range.xRslRg.iMax ||
      block.iYRsl < range.yRslRg.iMin || block.iYRsl > range.yRslRg.iMax) {
    block.iError = NoSuchRsl;
    return;
  }
  TPrint& r = **block.hPrint;
  r.prInfo.iHRes = block.iXRsl;
  r.prInfo.iVRes = block.iYRsl;
  FillRecord(r, CurrentGeometry(r));
  block.iError = noErr;
}

void GetRotation(TGetRotnBlk& block) {
  if (!RecordUsable(block.hPrint)) {
    block.iError = paramErr;
    return;
  }
  const TPrint& r = **block.hPrint;
  RecordSettings s = SettingsOf(r);
  block.fLandscape = s.orientation == DMORIENT_LANDSCAPE ||
                     (s.orientation == 0 && r.prStl.iPageH > r.prStl.iPageV);
  block.iError = noErr;
}

}  // namespace
}  // namespace kwe::printing

using namespace kwe::printing;

KWE_API void KWE_CALL PrOpen(void) { SetPrintError(FindDefaultPrinter() ? noErr : fnfErr); }

KWE_API void KWE_CALL PrClose(void) {
  if (!PrintingDC()) ForgetPrinter();
}

KWE_API SInt16 KWE_CALL PrError(void) { return PrintError(); }
KWE_API void KWE_CALL PrSetError(SInt16 iErr) { SetPrintError(iErr); }

KWE_API void KWE_CALL PrGeneral(Ptr pData) {
  if (!pData) return;
  auto* head = reinterpret_cast<TGnlData*>(pData);
  switch (head->iOpCode) {
    case getRslDataOp: GetResolutions(*reinterpret_cast<TGetRslBlk*>(pData)); break;
    case setRslOp: SetResolution(*reinterpret_cast<TSetRslBlk*>(pData)); break;
    case getRotnOp: GetRotation(*reinterpret_cast<TGetRotnBlk*>(pData)); break;
    // Draft bits choose the ImageWriter's draft mode; Windows drivers pick
    // their own quality, so both are accepted and change nothing.
    case draftBitsOp:
    case noDraftBitsOp:
      head->iError = RecordUsable(reinterpret_cast<TDftBitsBlk*>(pData)->hPrint) ? noErr : paramErr;
      break;
    default: head->iError = OpNotImpl; break;
  }
}

// The Windows printer driver is loaded by GDI as a DC needs it: there is no
// driver to open, close, purge or address.
KWE_API void KWE_CALL PrDrvrOpen(void) {}
KWE_API void KWE_CALL PrDrvrClose(void) {}
KWE_API void KWE_CALL PrPurge(void) {}
KWE_API void KWE_CALL PrNoPurge(void) {}
KWE_API SInt16 KWE_CALL PrDrvrVers(void) { return kDriverVersion; }
KWE_API Handle KWE_CALL PrDrvrDCE(void) { return kwe::Unsupported(__func__, Handle{}); }
KWE_API void KWE_CALL PrCtlCall(SInt16, SInt32, SInt32, SInt32) { kwe::Unsupported(__func__); }
