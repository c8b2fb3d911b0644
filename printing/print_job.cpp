// PrOpenDoc to PrCloseDoc: a Windows print job whose pages are drawn
// through a QuickDraw port on the printer's DC. The port keeps the record's
// resolution (72 dots per inch by default) and the library scales it to the
// printer's, so a program lays out its pages as it did on a LaserWriter.
#include "printing/print_job.h"

#include <windows.h>

#include <cstring>

#include "Memory.h"
#include "Printing.h"
#include "frame/session.h"
#include "frame/unsupported.h"
#include "printing/print_status_window.h"
#include "printing/printer.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::printing {
namespace {

struct Job {
  HDC dc = nullptr;
  HDC discardDC = nullptr;  // what skipped pages draw into
  TPPrPort port = nullptr;
  GrafPtr callerPort = nullptr;
  PrIdleUPP idle = nullptr;
  PageGeometry geometry;
  SInt16 firstPage = iPrPgFst, lastPage = iPrPgMax;
  int page = 0;  // pages opened so far
  bool pageOpen = false, pagePrinted = false;
};
Job g_job;

bool Aborted() { return PrintError() == iPrAbort; }

// Windows calls this while it sends a page to the printer; so does
// PrClosePage. The application's idle procedure runs, the status window
// takes its clicks, and a cancel ends the job.
BOOL CALLBACK AbortProc(HDC, int) {
  PumpStatusWindow();
  if (g_job.idle) g_job.idle();
  return !Aborted();
}

// Puts dc under the printing port with the record's resolution scaled to
// the printer's dots.
void InstallDC(HDC dc, int resH, int resV) {
  using namespace kwe::quickdraw;
  GrafPtr port = &g_job.port->gPort;
  PortAttr* a = AttrOf(port);
  if (!a) return;
  ResetGdiCache(*a);
  a->hdc = dc;
  a->deviceDepth = static_cast<uint8_t>(DeviceDepthOf(dc));
  CoordinateMapping& m = a->mapping;
  m.scaleActive = 1;
  m.translateActive = 1;
  m.sourceExtentH = resH;
  m.sourceExtentV = resV;
  m.destExtentH = g_job.geometry.dpiX;
  m.destExtentV = g_job.geometry.dpiY;
  m.originH = port->portRect.left;
  m.originV = port->portRect.top;
  m.destOriginH = m.destOriginV = 0;
  a->dirty |= kPenDirty | kTextDirty;
  UpdateDevicePen(*a);
  UpdateDevicePenSize(*a);
  SetTextAlign(dc, TA_BASELINE);
  if (CurrentPort() == port) SetCurrentDC(dc);
  RebuildClip(port);
}

bool IsJobPort(TPPrPort port) { return port && g_job.dc && port == g_job.port; }

void EndJob() {
  HideStatusWindow();
  GrafPtr port = &g_job.port->gPort;
  ClosePort(port);
  if (g_job.port->fOurPtr) DisposePtr(reinterpret_cast<Ptr>(g_job.port));
  if (g_job.callerPort && g_job.callerPort != port) SetPort(g_job.callerPort);
  DeleteDC(g_job.dc);
  if (g_job.discardDC) DeleteDC(g_job.discardDC);
  g_job = Job{};
}

}  // namespace

HDC PrintingDC() { return g_job.dc; }

}  // namespace kwe::printing

using namespace kwe::printing;

KWE_API TPPrPort KWE_CALL PrOpenDoc(THPrint hPrint, TPPrPort pPrPort, Ptr) {
  const Printer* printer = CurrentPrinter();
  if (!printer) {
    SetPrintError(fnfErr);
    return nullptr;
  }
  if (!hPrint || !*hPrint || g_job.dc) {
    SetPrintError(paramErr);  // one document at a time
    return nullptr;
  }
  TPrint& r = **hPrint;
  HDC dc = PrinterDC(*printer, r, false);
  if (!dc) {
    SetPrintError(fnfErr);
    return nullptr;
  }
  SetAbortProc(dc, AbortProc);
  const char* name = kwe::TheSession().printDocumentName;
  DOCINFOA doc{};
  doc.cbSize = sizeof doc;
  doc.lpszDocName = *name ? name : "Document";
  SetPrintError(noErr);
  if (StartDocA(dc, &doc) <= 0) {
    DeleteDC(dc);
    SetPrintError(iIOAbort);
    return nullptr;
  }
  TPPrPort port = pPrPort;
  if (!port) {
    port = reinterpret_cast<TPPrPort>(NewPtrClear(sizeof(TPrPort)));
    if (!port) {
      AbortDoc(dc);
      DeleteDC(dc);
      SetPrintError(iMemFullErr);
      return nullptr;
    }
    port->fOurPtr = true;
  } else {
    port->fOurPtr = false;
  }
  port->fOurBits = false;
  g_job.dc = dc;
  g_job.port = port;
  g_job.geometry = GeometryOf(dc);
  g_job.idle = r.prJob.pIdleProc;
  g_job.firstPage = r.prJob.iFstPage;
  g_job.lastPage = r.prJob.iLstPage;
  GetPort(&g_job.callerPort);
  GrafPtr gp = &port->gPort;
  OpenPort(gp);
  gp->portRect = r.prInfo.rPage;
  RectRgn(gp->visRgn, &r.prInfo.rPage);
  InstallDC(dc, r.prInfo.iHRes, r.prInfo.iVRes);
  ShowStatusWindow(doc.lpszDocName);
  return port;
}

KWE_API void KWE_CALL PrOpenPage(TPPrPort pPrPort, Rect*) {
  if (!IsJobPort(pPrPort) || g_job.pageOpen) {
    SetPrintError(paramErr);
    return;
  }
  ++g_job.page;
  g_job.pageOpen = true;
  g_job.pagePrinted = !Aborted() && g_job.page >= g_job.firstPage && g_job.page <= g_job.lastPage;
  GrafPtr port = &pPrPort->gPort;
  int resH = 0, resV = 0;
  if (auto* a = kwe::quickdraw::AttrOf(port)) {
    resH = a->mapping.sourceExtentH;
    resV = a->mapping.sourceExtentV;
  }
  if (g_job.pagePrinted) {
    if (StartPage(g_job.dc) <= 0) {
      SetPrintError(iIOAbort);
      g_job.pagePrinted = false;
    }
  }
  // A page outside the job's range (or after an error) is drawn where
  // nobody sees it, as the Macintosh drivers did.
  if (!g_job.pagePrinted && !g_job.discardDC) g_job.discardDC = CreateCompatibleDC(nullptr);
  InstallDC(g_job.pagePrinted ? g_job.dc : g_job.discardDC, resH, resV);
}

KWE_API void KWE_CALL PrClosePage(TPPrPort pPrPort) {
  if (!IsJobPort(pPrPort) || !g_job.pageOpen) {
    SetPrintError(paramErr);
    return;
  }
  g_job.pageOpen = false;
  if (!g_job.pagePrinted) return;
  if (!AbortProc(g_job.dc, 0)) return;
  if (EndPage(g_job.dc) <= 0 && !Aborted()) SetPrintError(iIOAbort);
}

KWE_API void KWE_CALL PrCloseDoc(TPPrPort pPrPort) {
  if (!IsJobPort(pPrPort)) {
    SetPrintError(paramErr);
    return;
  }
  if (g_job.pageOpen) PrClosePage(pPrPort);
  if (PrintError() == noErr)
    EndDoc(g_job.dc);
  else
    AbortDoc(g_job.dc);
  EndJob();
}

// Pages went to the printer as they were drawn: nothing is left to spool.
KWE_API void KWE_CALL PrPicFile(THPrint hPrint, TPPrPort, Ptr, Ptr, TPPrStatus prStatus) {
  if (!prStatus) return;
  std::memset(prStatus, 0, sizeof *prStatus);
  prStatus->hPrint = hPrint;
  prStatus->iTotCopies = 1;
}
