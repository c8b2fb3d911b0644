// The style and job dialogs over the common page-setup and print dialogs,
// each with the host's hook procedure when the session names one.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "Printing.h"
#include "frame/session.h"
#include "frame/unsupported.h"
#include "printing/printer.h"

namespace kwe::printing {

namespace {

HGLOBAL GlobalCopy(const void* data, size_t size) {
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
  if (!memory) return nullptr;
  std::memcpy(GlobalLock(memory), data, size);
  GlobalUnlock(memory);
  return memory;
}

HGLOBAL DevNamesOf(const Printer& p) {
  size_t size = sizeof(DEVNAMES) + p.driver.size() + p.device.size() + p.port.size() + 3;
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
  if (!memory) return nullptr;
  auto* names = static_cast<DEVNAMES*>(GlobalLock(memory));
  char* base = reinterpret_cast<char*>(names);
  WORD at = sizeof(DEVNAMES);
  for (auto [field, text] :
       {std::pair{&names->wDriverOffset, &p.driver}, std::pair{&names->wDeviceOffset, &p.device},
        std::pair{&names->wOutputOffset, &p.port}}) {
    *field = at;
    std::memcpy(base + at, text->c_str(), text->size() + 1);
    at = static_cast<WORD>(at + text->size() + 1);
  }
  GlobalUnlock(memory);
  return memory;
}

// The printer the dialog ended on, and the record's settings from its
// DEVMODE.
void TakeDialogResult(HGLOBAL devNames, HGLOBAL devMode, TPrint& record, SInt16* copies) {
  Printer chosen = *CurrentPrinter();
  if (devNames) {
    auto* names = static_cast<const DEVNAMES*>(GlobalLock(devNames));
    const char* base = reinterpret_cast<const char*>(names);
    chosen.driver = base + names->wDriverOffset;
    chosen.device = base + names->wDeviceOffset;
    chosen.port = base + names->wOutputOffset;
    GlobalUnlock(devNames);
  }
  RecordSettings settings = SettingsOf(record);
  if (devMode) {
    auto* dm = static_cast<const DEVMODEA*>(GlobalLock(devMode));
    const BYTE* bytes = reinterpret_cast<const BYTE*>(dm);
    chosen.devMode.assign(bytes, bytes + dm->dmSize + dm->dmDriverExtra);
    // Some drivers change the fields without marking them in dmFields.
    if (dm->dmPaperSize > 0) settings.paperSize = dm->dmPaperSize;
    if (dm->dmOrientation == DMORIENT_PORTRAIT || dm->dmOrientation == DMORIENT_LANDSCAPE)
      settings.orientation = dm->dmOrientation;
    if (copies && (dm->dmFields & DM_COPIES) && dm->dmCopies > 1) *copies = dm->dmCopies;
    GlobalUnlock(devMode);
  }
  ChoosePrinter(std::move(chosen));
  KeepSettings(record, settings);
  FillRecord(record, CurrentGeometry(record));
}

// Runs a common dialog on the current printer with the record's settings:
// show gets the DEVMODE and DEVNAMES handles (and may replace them) and
// answers whether the user confirmed.
template <class Show>
bool RunPrinterDialog(THPrint hPrint, SInt16* copies, Show show) {
  const Printer* printer = CurrentPrinter();
  if (!printer) {
    SetPrintError(fnfErr);
    return false;
  }
  if (!RecordUsable(hPrint)) {
    SetPrintError(paramErr);
    return false;
  }
  std::vector<BYTE> mode = DevModeFor(*printer, **hPrint);
  HGLOBAL devMode = mode.empty() ? nullptr : GlobalCopy(mode.data(), mode.size());
  HGLOBAL devNames = DevNamesOf(*printer);
  bool ok = show(devMode, devNames);
  if (ok) TakeDialogResult(devNames, devMode, **hPrint, copies);
  if (!ok && CommDlgExtendedError() != 0) SetPrintError(fnfErr);
  if (devMode) GlobalFree(devMode);
  if (devNames) GlobalFree(devNames);
  return ok;
}

}  // namespace
}  // namespace kwe::printing

using namespace kwe::printing;

KWE_API Boolean KWE_CALL PrStlDialog(THPrint hPrint) {
  return RunPrinterDialog(hPrint, nullptr, [](HGLOBAL& devMode, HGLOBAL& devNames) {
    PAGESETUPDLGA psd{};
    psd.lStructSize = sizeof psd;
    psd.hwndOwner = kwe::TheSession().mainWindow;
    psd.hDevMode = devMode;
    psd.hDevNames = devNames;
    // The margins are the printer's: a Macintosh page is its printable area.
    psd.Flags = PSD_DISABLEMARGINS;
    if (ProcPtr hook = kwe::TheSession().printSetupDialogHook) {
      psd.Flags |= PSD_ENABLEPAGESETUPHOOK;
      psd.lpfnPageSetupHook = reinterpret_cast<LPPAGESETUPHOOK>(hook);
    }
    bool ok = PageSetupDlgA(&psd) != 0;
    devMode = psd.hDevMode;
    devNames = psd.hDevNames;
    return ok;
  });
}

// Copies go to the printer in its DEVMODE, so the record asks the program
// for one: a program that loops over iCopies prints each copy once.
KWE_API Boolean KWE_CALL PrJobDialog(THPrint hPrint) {
  PRINTDLGA pd{};
  pd.Flags = PD_NOSELECTION | PD_USEDEVMODECOPIESANDCOLLATE;
  if (RecordUsable(hPrint)) {
    const TPrJob& job = (**hPrint).prJob;
    pd.nMinPage = iPrPgFst;
    pd.nMaxPage = iPrPgMax;
    pd.nFromPage = static_cast<WORD>(std::clamp<int>(job.iFstPage, iPrPgFst, iPrPgMax));
    pd.nToPage = static_cast<WORD>(std::clamp<int>(job.iLstPage, pd.nFromPage, iPrPgMax));
    pd.nCopies = static_cast<WORD>(std::max<int>(job.iCopies, 1));
    if (pd.nFromPage != iPrPgFst || pd.nToPage != iPrPgMax) pd.Flags |= PD_PAGENUMS;
  }
  if (ProcPtr hook = kwe::TheSession().printDialogHook) {
    pd.Flags |= PD_ENABLEPRINTHOOK;
    pd.lpfnPrintHook = reinterpret_cast<LPPRINTHOOKPROC>(hook);
  }
  SInt16 copies = 1;
  bool ok = RunPrinterDialog(hPrint, &copies, [&pd](HGLOBAL& devMode, HGLOBAL& devNames) {
    pd.lStructSize = sizeof pd;
    pd.hwndOwner = kwe::TheSession().mainWindow;
    pd.hDevMode = devMode;
    pd.hDevNames = devNames;
    bool confirmed = PrintDlgA(&pd) != 0;
    devMode = pd.hDevMode;
    devNames = pd.hDevNames;
    if (pd.hDC) DeleteDC(pd.hDC);
    return confirmed;
  });
  if (!ok) return false;
  TPrJob& job = (**hPrint).prJob;
  if (pd.Flags & PD_PAGENUMS) {
    job.iFstPage = static_cast<SInt16>(pd.nFromPage);
    job.iLstPage = static_cast<SInt16>(std::max(pd.nFromPage, pd.nToPage));
  } else {
    job.iFstPage = iPrPgFst;
    job.iLstPage = iPrPgMax;
  }
  job.iCopies = 1;
  job.fFromUsr = true;
  KeepCopies(**hPrint, std::max<SInt16>(copies, static_cast<SInt16>(pd.nCopies)));
  return true;
}

KWE_API TPPrDlg KWE_CALL PrStlInit(THPrint) { return kwe::Unsupported(__func__, TPPrDlg{}); }
KWE_API TPPrDlg KWE_CALL PrJobInit(THPrint) { return kwe::Unsupported(__func__, TPPrDlg{}); }

KWE_API Boolean KWE_CALL PrDlgMain(THPrint hPrint, PDlgInitProcPtr pDlgInit) {
  if (pDlgInit == PrStlInit) return PrStlDialog(hPrint);
  if (pDlgInit != PrJobInit) kwe::Report("PrDlgMain");
  return PrJobDialog(hPrint);
}
