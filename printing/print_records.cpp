// The print record: its defaults for the current printer, and PrValidate.
#include <windows.h>

#include <cstring>

#include "Memory.h"
#include "Printing.h"
#include "printing/printer.h"

namespace kwe::printing {

PageGeometry CurrentGeometry(const TPrint& record) {
  const Printer* printer = CurrentPrinter();
  if (!printer) return PageGeometry{};
  HDC ic = PrinterDC(*printer, record, true);
  if (!ic) return PageGeometry{};
  PageGeometry g = ScaledGeometryOf(ic, *printer, record);
  DeleteDC(ic);
  return g;
}

bool RecordUsable(THPrint hPrint) {
  return hPrint && *hPrint &&
         GetHandleSize(reinterpret_cast<Handle>(hPrint)) >= static_cast<Size>(sizeof(TPrint));
}

}  // namespace kwe::printing

using namespace kwe::printing;

KWE_API void KWE_CALL PrintDefault(THPrint hPrint) {
  if (!RecordUsable(hPrint)) {
    SetPrintError(paramErr);
    return;
  }
  TPrint& r = **hPrint;
  std::memset(&r, 0, sizeof r);
  r.prJob.iFstPage = iPrPgFst;
  r.prJob.iLstPage = iPrPgMax;
  r.prJob.iCopies = 1;
  r.prJob.fFromUsr = true;
  // Pages go to the printer as they are drawn: Windows spools whole pages
  // itself. A program that wants the spool loop sets bSpoolLoop.
  r.prJob.bJDocLoop = bDraftLoop;
  FillRecord(r, CurrentGeometry(r));
}

KWE_API Boolean KWE_CALL PrValidate(THPrint hPrint) {
  if (!RecordUsable(hPrint)) {
    SetPrintError(paramErr);
    return false;
  }
  TPrint before = **hPrint;
  TPrint& r = **hPrint;
  bool resolutionOk =
      r.prInfo.iHRes > 0 && r.prInfo.iVRes > 0 && r.prInfo.iHRes <= 2400 && r.prInfo.iVRes <= 2400;
  if (r.iPrVersion != iPrRelease || !resolutionOk) {
    // An older or damaged record starts again from the defaults, keeping
    // only the job's pages and copies when they make sense.
    TPrJob job = r.prJob;
    PrintDefault(hPrint);
    if (job.iFstPage >= iPrPgFst && job.iFstPage <= job.iLstPage && job.iLstPage <= iPrPgMax)
      r.prJob.iFstPage = job.iFstPage, r.prJob.iLstPage = job.iLstPage;
    if (job.iCopies >= 1 && job.iCopies <= 999) r.prJob.iCopies = job.iCopies;
    if (job.bJDocLoop == bSpoolLoop) r.prJob.bJDocLoop = bSpoolLoop;
  } else {
    if (r.prJob.iCopies < 1) r.prJob.iCopies = 1;
    if (r.prJob.iFstPage < iPrPgFst) r.prJob.iFstPage = iPrPgFst;
    if (r.prJob.iLstPage < r.prJob.iFstPage || r.prJob.iLstPage > iPrPgMax)
      r.prJob.iLstPage = iPrPgMax;
    // The two application loops of old drivers are printed as drafts.
    if (r.prJob.bJDocLoop != bSpoolLoop) r.prJob.bJDocLoop = bDraftLoop;
    FillRecord(r, CurrentGeometry(r));
  }
  return std::memcmp(&before, &r, sizeof r) != 0;
}
