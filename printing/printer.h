// The printer the Printing Manager prints on: Windows' default printer as
// PrOpen found it, or the one the user picked in the print-setup dialog.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "Printing.h"

namespace kwe::printing {

struct Printer {
  std::string driver, device, port;
  std::vector<BYTE> devMode;  // the printer's DEVMODEA with its private part
};

// What a page looks like on the printer, in printer dots.
struct PageGeometry {
  int dpiX = 72, dpiY = 72;
  int printableWidth = 576, printableHeight = 756;  // HORZRES, VERTRES
  int paperWidth = 612, paperHeight = 792;          // PHYSICALWIDTH, PHYSICALHEIGHT
  int offsetX = 18, offsetY = 18;                   // PHYSICALOFFSETX, PHYSICALOFFSETY
  // The DEVMODE's reduction or enlargement in percent, and the part of it
  // the library applies: none when the driver reports dots per inch
  // scaled already (Wine's PostScript driver does).
  int devModeScale = 100, scale = 100;
  bool postScript = false;
};

// Between PrOpen and PrClose; null before PrOpen and when Windows has no
// printer.
const Printer* CurrentPrinter();
// PrOpen's search; false when there is no default printer.
bool FindDefaultPrinter();
void ForgetPrinter();
// After the print-setup dialog: the user's printer and settings.
void ChoosePrinter(Printer printer);

// The printer's DEVMODE with the paper and orientation a record keeps.
std::vector<BYTE> DevModeFor(const Printer& printer, const TPrint& record);
// A DC (information context with forInformation) for the printer as the
// record sets it up; null on failure.
HDC PrinterDC(const Printer& printer, const TPrint& record, bool forInformation);
PageGeometry GeometryOf(HDC dc);
// GeometryOf dc, a DC of printer for record, with the printer's scale.
PageGeometry ScaledGeometryOf(HDC dc, const Printer& printer, const TPrint& record);
// dmScale of a DEVMODE in percent: 100 when the field is unset or out of
// the range drivers offer.
int ScaleOf(const std::vector<BYTE>& devMode);
// Whether the printer takes PostScript through the pass-through escape.
bool IsPostScript(HDC dc);

// The record's own part of printX: paper, orientation and copies as
// Windows names them (0 for the printer's default).
struct RecordSettings {
  short paperSize = 0;
  short orientation = 0;
  short copies = 0;
};
RecordSettings SettingsOf(const TPrint& record);
void KeepSettings(TPrint& record, const RecordSettings& settings);
bool HasSettings(const TPrint& record);
void KeepCopies(TPrint& record, short copies);

// Fills the record for geometry at its current resolution (72 dots per
// inch when the record has none).
void FillRecord(TPrint& record, const PageGeometry& geometry);

// A handle that holds a whole print record.
bool RecordUsable(THPrint hPrint);
// The current printer's page as the record sets it up; US Letter at 72
// dots per inch with quarter-inch margins when there is no printer.
PageGeometry CurrentGeometry(const TPrint& record);

void SetPrintError(SInt16 error);
SInt16 PrintError();

}  // namespace kwe::printing
