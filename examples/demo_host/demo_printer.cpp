// Gives a fresh Wine prefix the printer the demonstration prints on: Wine's
// PostScript driver, with a small printer description of its own (US
// Letter, 300 dots per inch), printing into a file, made Windows' default
// printer. The demonstration itself only asks Windows for the default
// printer, as a Macintosh program asks for the chosen one.
//   demo_printer.exe <output.ps>
#include <windows.h>
#include <winspool.h>

#include <cstdio>
#include <string>

namespace {

constexpr char kDriver[] = "KWE Demo PostScript";
constexpr char kPrinter[] = "KWE Demo Printer";
constexpr char kDescription[] =
    "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
    "*LanguageVersion: English\n*LanguageEncoding: ISOLatin1\n*PCFileName: \"KWEDEMO.PPD\"\n"
    "*Manufacturer: \"KWE\"\n*Product: \"(KWE Demo Printer)\"\n*ModelName: \"KWE Demo\"\n"
    "*ShortNickName: \"KWE Demo\"\n*NickName: \"KWE Demo\"\n*PSVersion: \"(3010.000) 0\"\n"
    "*LanguageLevel: \"3\"\n*ColorDevice: True\n*TTRasterizer: Type42\n"
    "*DefaultResolution: 300dpi\n*OpenUI *PageSize: PickOne\n*DefaultPageSize: Letter\n"
    "*PageSize Letter/US Letter: \"<</PageSize[612 792]>>setpagedevice\"\n"
    "*CloseUI: *PageSize\n*DefaultImageableArea: Letter\n"
    "*ImageableArea Letter/US Letter: \"18 36 594 756\"\n*DefaultPaperDimension: Letter\n"
    "*PaperDimension Letter/US Letter: \"612 792\"\n*DefaultFont: Courier\n"
    "*Font Courier: Standard \"(002.004S)\" Standard ROM\n";

int Fail(const char* what) {
  std::fprintf(stderr, "demo_printer: %s failed (%lu)\n", what, GetLastError());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return std::fprintf(stderr, "usage: demo_printer <output.ps>\n"), 2;
  char output[MAX_PATH];
  if (!GetFullPathNameA(argv[1], MAX_PATH, output, nullptr)) return Fail("GetFullPathName");
  char dir[MAX_PATH];
  DWORD needed = 0;
  if (!GetPrinterDriverDirectoryA(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(dir), sizeof dir,
                                  &needed))
    return Fail("GetPrinterDriverDirectory");
  std::string description = std::string(dir) + "\\kwedemo.ppd";
  FILE* f = std::fopen(description.c_str(), "wb");
  if (!f) return Fail("writing the printer description");
  std::fputs(kDescription, f);
  std::fclose(f);
  DRIVER_INFO_3A driver{};
  driver.cVersion = 3;
  driver.pName = const_cast<char*>(kDriver);
  driver.pDriverPath = const_cast<char*>("wineps.drv");
  driver.pDataFile = description.data();
  driver.pConfigFile = const_cast<char*>("wineps.drv");
  if (!AddPrinterDriverA(nullptr, 3, reinterpret_cast<BYTE*>(&driver)))
    return Fail("AddPrinterDriver");
  PRINTER_INFO_2A info{};
  info.pPrinterName = const_cast<char*>(kPrinter);
  info.pPortName = output;  // a file name: each job is written there
  info.pDriverName = const_cast<char*>(kDriver);
  info.pPrintProcessor = const_cast<char*>("WinPrint");
  info.pDatatype = const_cast<char*>("RAW");
  info.Attributes = PRINTER_ATTRIBUTE_LOCAL;
  HANDLE printer = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&info));
  if (!printer) return Fail("AddPrinter");
  ClosePrinter(printer);
  if (!SetDefaultPrinterA(kPrinter)) return Fail("SetDefaultPrinter");
  std::printf("Printer \"%s\" prints into %s\n", kPrinter, output);
  return 0;
}
