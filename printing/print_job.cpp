// PrOpenDoc to PrCloseDoc: a Windows print job whose pages are drawn
// through a QuickDraw port on the printer's DC. The port keeps the record's
// resolution (72 dots per inch by default) and the library scales it to the
// printer's, so a program lays out its pages as it did on a LaserWriter.
//
// In draft mode (bJDocLoop = bDraftLoop) each page goes to the printer as it
// is drawn. In spool mode (bSpoolLoop) each page is recorded as a picture
// into the spool file and nothing is printed until PrPicFile plays the file
// back. A driver that asks for bands (RC_BANDING, or the session's banding
// switch with a driver that takes NEXTBAND) gets each page recorded and
// played once per band with the clip on the band.
#include "printing/print_job.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <numeric>

#include "Memory.h"
#include "Printing.h"
#include "QuickdrawPictures.h"
#include "frame/session.h"
#include "frame/unsupported.h"
#include "printing/print_spool.h"
#include "printing/print_status_window.h"
#include "printing/printer.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::printing {
namespace {

// KWE_SetFlags' second pair: band pages wherever the driver can.
constexpr UInt16 kBandingSwitch = 0x0040;

struct Job {
  HDC dc = nullptr;         // the printer's; an information context while spooling
  HDC discardDC = nullptr;  // what skipped and recorded pages draw into
  TPPrPort port = nullptr;
  GrafPtr callerPort = nullptr;
  PrIdleUPP idle = nullptr;
  PageGeometry geometry;
  int resH = 72, resV = 72;  // the record's
  SInt16 firstPage = iPrPgFst, lastPage = iPrPgMax;
  int page = 0;  // pages opened so far
  bool pageOpen = false, pagePrinted = false;
  bool spooling = false, banding = false;
  PicHandle recording = nullptr;  // the page being recorded
  TPPrStatus status = nullptr;    // PrPicFile's, while it plays the spool file
};
Job g_job;

bool Aborted() { return PrintError() == iPrAbort; }

bool WantsBands(HDC dc) {
  int escape = NEXTBAND;
  bool takesBands = ExtEscape(dc, QUERYESCSUPPORT, sizeof escape, reinterpret_cast<LPCSTR>(&escape),
                              0, nullptr) > 0;
  bool asks = (GetDeviceCaps(dc, RASTERCAPS) & RC_BANDING) != 0 ||
              (TheSession().drawingSwitches & kBandingSwitch) != 0;
  return takesBands && asks;
}

// Puts dc under the printing port with the record's resolution scaled to
// the printer's dots and reduced or enlarged by the printer's scale.
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
  // In lowest terms: text and pen sizes scale through 16-bit ratios.
  int unitsH = resH * 100, dotsH = g_job.geometry.dpiX * g_job.geometry.scale;
  int unitsV = resV * 100, dotsV = g_job.geometry.dpiY * g_job.geometry.scale;
  int h = std::max(std::gcd(unitsH, dotsH), 1), v = std::max(std::gcd(unitsV, dotsV), 1);
  m.sourceExtentH = unitsH / h;
  m.sourceExtentV = unitsV / v;
  m.destExtentH = dotsH / h;
  m.destExtentV = dotsV / v;
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

void Install(HDC dc) { InstallDC(dc, g_job.resH, g_job.resV); }

HDC DiscardDC() {
  if (!g_job.discardDC) g_job.discardDC = CreateCompatibleDC(nullptr);
  return g_job.discardDC;
}

// The port's visible region limited to a band the driver gave in device
// pixels (the whole page again when band is null).
void LimitToBand(const RECT* band) {
  GrafPtr port = &g_job.port->gPort;
  Rect r = port->portRect;
  if (band) {
    auto* a = kwe::quickdraw::AttrOf(port);
    if (!a) return;
    int left = band->left, top = band->top, right = band->right, bottom = band->bottom;
    kwe::quickdraw::DeviceToLocal(*a, &left, &top);
    kwe::quickdraw::DeviceToLocal(*a, &right, &bottom);
    r = Rect{static_cast<SInt16>(top), static_cast<SInt16>(left), static_cast<SInt16>(bottom),
             static_cast<SInt16>(right)};
  }
  RectRgn(port->visRgn, &r);
  kwe::quickdraw::RebuildClip(port);
}

void ReportBand(int band, int bands) {
  if (!g_job.status) return;
  g_job.status->iCurBand = static_cast<SInt16>(band);
  g_job.status->iTotBands = static_cast<SInt16>(bands);
}

// Plays a page onto the printer: once, or once per band the driver asks
// for, the last NEXTBAND (an empty band) ending the page.
void PrintPicture(PicHandle page) {
  GrafPtr port = &g_job.port->gPort;
  GrafPtr saved = nullptr;
  GetPort(&saved);
  SetPort(port);
  if (StartPage(g_job.dc) <= 0) {
    SetPrintError(iIOAbort);
    SetPort(saved);
    return;
  }
  Install(g_job.dc);
  Rect frame = (**page).picFrame;
  if (!g_job.banding) {
    ReportBand(1, 1);
    DrawPicture(page, &frame);
    if (K_AbortProc(g_job.dc, 0) && EndPage(g_job.dc) <= 0 && !Aborted()) SetPrintError(iIOAbort);
  } else {
    RECT band;
    int bands = 0;
    for (;;) {
      if (Escape(g_job.dc, NEXTBAND, 0, nullptr, &band) <= 0) {
        SetPrintError(iIOAbort);
        break;
      }
      if (IsRectEmpty(&band)) break;
      ++bands;
      ReportBand(bands, bands);  // the driver tells no count in advance
      LimitToBand(&band);
      DrawPicture(page, &frame);
      if (!K_AbortProc(g_job.dc, 0)) break;
    }
    LimitToBand(nullptr);
  }
  SetPort(saved);
}

bool IsJobPort(TPPrPort port) { return port && g_job.dc && port == g_job.port; }

void EndJob() {
  HideStatusWindow();
  GrafPtr port = &g_job.port->gPort;
  if (g_job.recording) {
    SetPort(port);
    ClosePicture();
    KillPicture(g_job.recording);
  }
  ClosePort(port);
  if (g_job.port->fOurPtr) DisposePtr(reinterpret_cast<Ptr>(g_job.port));
  if (g_job.callerPort && g_job.callerPort != port) SetPort(g_job.callerPort);
  DeleteDC(g_job.dc);
  if (g_job.discardDC) DeleteDC(g_job.discardDC);
  g_job = Job{};
}

// The printing port: the program's own or one made here (freed at the end).
TPPrPort TakePort(TPPrPort given) {
  TPPrPort port = given;
  if (!port) {
    port = reinterpret_cast<TPPrPort>(NewPtrClear(sizeof(TPrPort)));
    if (!port) return nullptr;
    port->fOurPtr = true;
  } else {
    port->fOurPtr = false;
  }
  port->fOurBits = false;
  return port;
}

// Starts a job on the current printer: a Windows print job, or while
// spooling only an information context to measure with and a new spool
// file.
TPPrPort OpenJob(THPrint hPrint, TPPrPort given, bool spooling) {
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
  HDC dc = PrinterDC(*printer, r, spooling);
  if (!dc) {
    SetPrintError(fnfErr);
    return nullptr;
  }
  const char* name = kwe::TheSession().printDocumentName;
  DOCINFOA doc{};
  doc.cbSize = sizeof doc;
  doc.lpszDocName = *name ? name : "Document";
  SetPrintError(noErr);
  bool started = false;
  if (spooling) {
    started = BeginSpool();
  } else {
    SetAbortProc(dc, K_AbortProc);
    started = StartDocA(dc, &doc) > 0;
  }
  if (!started) {
    DeleteDC(dc);
    SetPrintError(spooling ? iPrSavPFil : iIOAbort);
    return nullptr;
  }
  TPPrPort port = TakePort(given);
  if (!port) {
    if (spooling)
      EndSpool(true);
    else
      AbortDoc(dc);
    DeleteDC(dc);
    SetPrintError(iMemFullErr);
    return nullptr;
  }
  g_job.dc = dc;
  g_job.port = port;
  g_job.geometry = ScaledGeometryOf(dc, *printer, r);
  g_job.spooling = spooling;
  g_job.banding = !spooling && WantsBands(dc);
  g_job.idle = r.prJob.pIdleProc;
  g_job.firstPage = r.prJob.iFstPage;
  g_job.lastPage = r.prJob.iLstPage;
  GetPort(&g_job.callerPort);
  GrafPtr gp = &port->gPort;
  OpenPort(gp);
  gp->portRect = r.prInfo.rPage;
  RectRgn(gp->visRgn, &r.prInfo.rPage);
  g_job.resH = r.prInfo.iHRes > 0 ? r.prInfo.iHRes : 72;
  g_job.resV = r.prInfo.iVRes > 0 ? r.prInfo.iVRes : 72;
  Install(spooling ? DiscardDC() : dc);
  if (!spooling) ShowStatusWindow(doc.lpszDocName);
  return port;
}

void CloseJob() {
  if (g_job.spooling)
    EndSpool(PrintError() != noErr);
  else if (PrintError() == noErr)
    EndDoc(g_job.dc);
  else
    AbortDoc(g_job.dc);
  EndJob();
}

}  // namespace

HDC PrintingDC() { return g_job.spooling ? nullptr : g_job.dc; }
int PrintingScale() { return g_job.dc ? g_job.geometry.devModeScale : 100; }

}  // namespace kwe::printing

using namespace kwe::printing;

KWE_API TPPrPort KWE_CALL PrOpenDoc(THPrint hPrint, TPPrPort pPrPort, Ptr) {
  bool spooling = hPrint && *hPrint && (**hPrint).prJob.bJDocLoop == bSpoolLoop;
  return OpenJob(hPrint, pPrPort, spooling);
}

KWE_API void KWE_CALL PrOpenPage(TPPrPort pPrPort, Rect*) {
  if (!IsJobPort(pPrPort) || g_job.pageOpen) {
    SetPrintError(paramErr);
    return;
  }
  ++g_job.page;
  g_job.pageOpen = true;
  g_job.pagePrinted = !Aborted() && g_job.page >= g_job.firstPage && g_job.page <= g_job.lastPage;
  bool records = g_job.pagePrinted && (g_job.spooling || g_job.banding);
  if (g_job.pagePrinted && !records && StartPage(g_job.dc) <= 0) {
    SetPrintError(iIOAbort);
    g_job.pagePrinted = false;
  }
  // A page outside the job's range (or after an error) is drawn where
  // nobody sees it, as the Macintosh drivers did; a recorded page only
  // into its picture.
  Install(g_job.pagePrinted && !records ? g_job.dc : DiscardDC());
  if (records) g_job.recording = OpenPicture(&pPrPort->gPort.portRect);
}

KWE_API void KWE_CALL PrClosePage(TPPrPort pPrPort) {
  if (!IsJobPort(pPrPort) || !g_job.pageOpen) {
    SetPrintError(paramErr);
    return;
  }
  g_job.pageOpen = false;
  if (!g_job.pagePrinted) return;
  if (PicHandle page = g_job.recording) {
    GrafPtr saved = nullptr;
    GetPort(&saved);
    SetPort(&pPrPort->gPort);
    ClosePicture();
    SetPort(saved);
    g_job.recording = nullptr;
    if (g_job.spooling && !SpoolPage(page)) SetPrintError(iPrSavPFil);
    if (!g_job.spooling && !Aborted()) PrintPicture(page);
    KillPicture(page);
    return;
  }
  if (!K_AbortProc(g_job.dc, 0)) return;
  if (EndPage(g_job.dc) <= 0 && !Aborted()) SetPrintError(iIOAbort);
}

KWE_API void KWE_CALL PrCloseDoc(TPPrPort pPrPort) {
  if (!IsJobPort(pPrPort)) {
    SetPrintError(paramErr);
    return;
  }
  if (g_job.pageOpen) PrClosePage(pPrPort);
  CloseJob();
}

// Plays the spool file of the last spooled document onto the printer, page
// by page (band by band where the driver asks for bands), reporting in
// prStatus as it goes. After a draft document there is nothing to play.
KWE_API void KWE_CALL PrPicFile(THPrint hPrint, TPPrPort pPrPort, Ptr, Ptr, TPPrStatus prStatus) {
  TPrStatus local;
  TPPrStatus status = prStatus ? prStatus : &local;
  std::memset(status, 0, sizeof *status);
  status->hPrint = hPrint;
  status->iTotCopies = status->iCurCopy = 1;
  if (!SpoolWaiting()) return;
  SpoolReader spool;
  if (!spool.Open()) {
    SetPrintError(iPrSavPFil);
    DiscardSpool();
    return;
  }
  status->iTotPages = static_cast<SInt16>(spool.Pages());
  TPPrPort port = OpenJob(hPrint, pPrPort, false);
  if (!port) {
    DiscardSpool();
    return;
  }
  g_job.status = status;
  status->pPrPort = port;
  // A damaged page ends the document; the whole ones before it still print.
  bool damaged = false;
  for (int i = 0; i < spool.Pages() && PrintError() == noErr; ++i) {
    PicHandle page = spool.NextPage();
    if (!page) {
      damaged = true;
      break;
    }
    status->iCurPage = static_cast<SInt16>(i + 1);
    status->hPic = page;
    status->fPgDirty = status->fImaging = true;
    PrintPicture(page);
    status->fImaging = false;
    status->hPic = nullptr;
    KillPicture(page);
  }
  CloseJob();
  DiscardSpool();
  if (damaged) SetPrintError(iPrSavPFil);
}

// Windows calls this while it sends a page to the printer; so does
// PrClosePage. The application's idle procedure runs, the status window
// takes its clicks, and a cancel ends the job. Exported because it is the
// procedure the library hands to SetAbortProc.
KWE_API BOOL CALLBACK K_AbortProc(HDC, int) {
  kwe::printing::PumpStatusWindow();
  if (g_job.idle) g_job.idle();
  return !Aborted();
}
