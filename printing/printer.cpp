#include "printing/printer.h"

#include <commdlg.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "frame/low_memory.h"

namespace kwe::printing {
namespace {

// printX[0..3]: a mark that the rest is this library's, then the paper,
// orientation and copies. Records from elsewhere lack the mark and get the printer's
// defaults.
constexpr SInt16 kSettingsMark = 0x4B57;  // 'KW'
constexpr int kDefaultResolution = 72;
constexpr int kLeastScale = 1, kMostScale = 1000;  // percent, as drivers offer it

bool g_open = false;
Printer g_printer;

std::string Field(const DEVNAMES* names, WORD offset) {
  return reinterpret_cast<const char*>(names) + offset;
}

int Scale(int value, int to, int from) { return from ? MulDiv(value, to, from) : value; }

SInt16 Short(int value) {
  if (value > 32767) return 32767;
  if (value < -32768) return -32768;
  return static_cast<SInt16>(value);
}

}  // namespace

const Printer* CurrentPrinter() { return g_open ? &g_printer : nullptr; }

bool FindDefaultPrinter() {
  PRINTDLGA pd{};
  pd.lStructSize = sizeof pd;
  pd.Flags = PD_RETURNDEFAULT;
  if (!PrintDlgA(&pd) || !pd.hDevNames) {
    if (pd.hDevMode) GlobalFree(pd.hDevMode);
    return false;
  }
  Printer printer;
  auto* names = static_cast<const DEVNAMES*>(GlobalLock(pd.hDevNames));
  printer.driver = Field(names, names->wDriverOffset);
  printer.device = Field(names, names->wDeviceOffset);
  printer.port = Field(names, names->wOutputOffset);
  GlobalUnlock(pd.hDevNames);
  GlobalFree(pd.hDevNames);
  if (pd.hDevMode) {
    auto* mode = static_cast<const BYTE*>(GlobalLock(pd.hDevMode));
    auto* dm = reinterpret_cast<const DEVMODEA*>(mode);
    printer.devMode.assign(mode, mode + dm->dmSize + dm->dmDriverExtra);
    GlobalUnlock(pd.hDevMode);
    GlobalFree(pd.hDevMode);
  }
  ChoosePrinter(std::move(printer));
  return true;
}

void ForgetPrinter() {
  g_open = false;
  g_printer = Printer{};
}

void ChoosePrinter(Printer printer) {
  g_printer = std::move(printer);
  g_open = true;
}

RecordSettings SettingsOf(const TPrint& record) {
  RecordSettings s;
  if (!HasSettings(record)) return s;
  s.paperSize = record.printX[1];
  s.orientation = record.printX[2];
  s.copies = record.printX[3];
  return s;
}

void KeepSettings(TPrint& record, const RecordSettings& settings) {
  record.printX[0] = kSettingsMark;
  record.printX[1] = settings.paperSize;
  record.printX[2] = settings.orientation;
  record.printX[3] = settings.copies;
}

void KeepCopies(TPrint& record, short copies) {
  RecordSettings s = SettingsOf(record);
  s.copies = copies;
  KeepSettings(record, s);
}

bool HasSettings(const TPrint& record) { return record.printX[0] == kSettingsMark; }

std::vector<BYTE> DevModeFor(const Printer& printer, const TPrint& record) {
  std::vector<BYTE> mode = printer.devMode;
  if (mode.size() < sizeof(DEVMODEA)) return mode;
  auto* dm = reinterpret_cast<DEVMODEA*>(mode.data());
  RecordSettings s = SettingsOf(record);
  if (s.paperSize > 0) {
    dm->dmPaperSize = s.paperSize;
    dm->dmFields = (dm->dmFields | DM_PAPERSIZE) & ~DWORD(DM_PAPERLENGTH | DM_PAPERWIDTH);
  }
  if (s.orientation == DMORIENT_PORTRAIT || s.orientation == DMORIENT_LANDSCAPE) {
    dm->dmOrientation = s.orientation;
    dm->dmFields |= DM_ORIENTATION;
  }
  if (s.copies > 0) {
    dm->dmCopies = s.copies;
    dm->dmFields |= DM_COPIES;
  }
  return mode;
}

namespace {

HDC PrinterDCWith(const Printer& printer, std::vector<BYTE>& mode, bool forInformation) {
  auto* dm = mode.size() >= sizeof(DEVMODEA) ? reinterpret_cast<DEVMODEA*>(mode.data()) : nullptr;
  const char* driver = printer.driver.empty() ? nullptr : printer.driver.c_str();
  return forInformation ? CreateICA(driver, printer.device.c_str(), nullptr, dm)
                        : CreateDCA(driver, printer.device.c_str(), nullptr, dm);
}

}  // namespace

HDC PrinterDC(const Printer& printer, const TPrint& record, bool forInformation) {
  std::vector<BYTE> mode = DevModeFor(printer, record);
  return PrinterDCWith(printer, mode, forInformation);
}

PageGeometry ScaledGeometryOf(HDC dc, const Printer& printer, const TPrint& record) {
  PageGeometry g = GeometryOf(dc);
  std::vector<BYTE> mode = DevModeFor(printer, record);
  g.devModeScale = ScaleOf(mode);
  if (g.devModeScale == 100) return g;
  // The same printer unscaled: when its dots per inch are the same, the
  // driver leaves the reduction to the program.
  reinterpret_cast<DEVMODEA*>(mode.data())->dmScale = 100;
  if (HDC unscaled = PrinterDCWith(printer, mode, true)) {
    if (GetDeviceCaps(unscaled, LOGPIXELSX) == g.dpiX) g.scale = g.devModeScale;
    DeleteDC(unscaled);
  }
  return g;
}

PageGeometry GeometryOf(HDC dc) {
  PageGeometry g;
  g.dpiX = GetDeviceCaps(dc, LOGPIXELSX);
  g.dpiY = GetDeviceCaps(dc, LOGPIXELSY);
  g.printableWidth = GetDeviceCaps(dc, HORZRES);
  g.printableHeight = GetDeviceCaps(dc, VERTRES);
  g.paperWidth = GetDeviceCaps(dc, PHYSICALWIDTH);
  g.paperHeight = GetDeviceCaps(dc, PHYSICALHEIGHT);
  g.offsetX = GetDeviceCaps(dc, PHYSICALOFFSETX);
  g.offsetY = GetDeviceCaps(dc, PHYSICALOFFSETY);
  if (g.dpiX <= 0 || g.dpiY <= 0) return PageGeometry{};
  if (g.paperWidth <= 0) g.paperWidth = g.printableWidth;
  if (g.paperHeight <= 0) g.paperHeight = g.printableHeight;
  g.postScript = IsPostScript(dc);
  return g;
}

int ScaleOf(const std::vector<BYTE>& devMode) {
  if (devMode.size() < offsetof(DEVMODEA, dmScale) + sizeof(short)) return 100;
  auto* dm = reinterpret_cast<const DEVMODEA*>(devMode.data());
  if (!(dm->dmFields & DM_SCALE) || dm->dmScale < kLeastScale || dm->dmScale > kMostScale)
    return 100;
  return dm->dmScale;
}

bool IsPostScript(HDC dc) {
  int escape = POSTSCRIPT_PASSTHROUGH;
  return ExtEscape(dc, QUERYESCSUPPORT, sizeof escape, reinterpret_cast<LPCSTR>(&escape), 0,
                   nullptr) > 0;
}

// A printer that reduces by half shows the program a page twice as large:
// the record's units stay its resolution's, and the printer's dots per unit
// shrink by the scale.
void FillRecord(TPrint& record, const PageGeometry& g) {
  int resH = record.prInfo.iHRes > 0 ? record.prInfo.iHRes : kDefaultResolution;
  int resV = record.prInfo.iVRes > 0 ? record.prInfo.iVRes : kDefaultResolution;
  int unitsH = resH * 100, unitsV = resV * 100;
  int dotsH = g.dpiX * g.scale, dotsV = g.dpiY * g.scale;
  // The Macintosh kind of device: 3 is a PostScript LaserWriter, which
  // applications test before sending PostScript comments; 1 an ImageWriter.
  SInt16 device = g.postScript ? 0x0300 : 0x0100;
  record.iPrVersion = iPrRelease;
  TPrInfo& info = record.prInfo;
  info.iDev = device;
  info.iHRes = Short(resH);
  info.iVRes = Short(resV);
  // The page's origin is the printable area's corner, as on the printer DC;
  // the paper lies around it.
  info.rPage = Rect{0, 0, Short(Scale(g.printableHeight, unitsV, dotsV)),
                    Short(Scale(g.printableWidth, unitsH, dotsH))};
  record.rPaper =
      Rect{Short(-Scale(g.offsetY, unitsV, dotsV)), Short(-Scale(g.offsetX, unitsH, dotsH)),
           Short(Scale(g.paperHeight - g.offsetY, unitsV, dotsV)),
           Short(Scale(g.paperWidth - g.offsetX, unitsH, dotsH))};
  // The sheet in the program's inches, as rPaper measures it.
  record.prStl.wDev = device;
  record.prStl.iPageV = Short(Scale(g.paperHeight, iPrPgFract * 100, dotsV));
  record.prStl.iPageH = Short(Scale(g.paperWidth, iPrPgFract * 100, dotsH));
  record.prStl.bPort = 0;
  record.prStl.feed = feedCut;
  record.prInfoPT = info;
  TPrXInfo& x = record.prXInfo;
  int width = info.rPage.right, height = info.rPage.bottom;
  x.iBandH = Short(width);
  x.iBandV = Short(height);
  x.iRowBytes = Short((width + 15) / 16 * 2);
  x.iDevBytes = Short(std::min(x.iRowBytes * height, 32767));
  x.iBands = 1;
  x.bPatScale = 0;
  x.bUlThick = 1;
  x.bUlOffset = 1;
  x.bUlShadow = 1;
  x.scan = scanTB;
  x.bXInfoX = 0;
}

void SetPrintError(SInt16 error) { lowmem::At<SInt16>(lowmem::Slot::PrintErr) = error; }
SInt16 PrintError() { return lowmem::At<SInt16>(lowmem::Slot::PrintErr); }

}  // namespace kwe::printing
