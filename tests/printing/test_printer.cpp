#include "printing/test_printer.h"

#include <winspool.h>

#include <cstdio>
#include <cstring>
#include <sstream>

namespace kwe_test {
namespace {

constexpr char kDriverName[] = "KWE Test PostScript";

// Letter and A4 at 300 dots per inch, with a quarter inch (18 points) of
// margin on the sides and half an inch at top and bottom.
constexpr char kDescription[] =
    "*PPD-Adobe: \"4.3\"\n"
    "*FormatVersion: \"4.3\"\n"
    "*FileVersion: \"1.0\"\n"
    "*LanguageVersion: English\n"
    "*LanguageEncoding: ISOLatin1\n"
    "*PCFileName: \"KWETEST.PPD\"\n"
    "*Manufacturer: \"KWE\"\n"
    "*Product: \"(KWE Test Printer)\"\n"
    "*ModelName: \"KWE Test Printer\"\n"
    "*ShortNickName: \"KWE Test Printer\"\n"
    "*NickName: \"KWE Test Printer\"\n"
    "*PSVersion: \"(3010.000) 0\"\n"
    "*LanguageLevel: \"3\"\n"
    "*ColorDevice: True\n"
    "*DefaultColorSpace: RGB\n"
    "*TTRasterizer: Type42\n"
    "*DefaultResolution: 300dpi\n"
    "*OpenUI *PageSize: PickOne\n"
    "*DefaultPageSize: Letter\n"
    "*PageSize Letter/US Letter: \"<</PageSize[612 792]>>setpagedevice\"\n"
    "*PageSize A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n"
    "*CloseUI: *PageSize\n"
    "*OpenUI *PageRegion: PickOne\n"
    "*DefaultPageRegion: Letter\n"
    "*PageRegion Letter/US Letter: \"<</PageSize[612 792]>>setpagedevice\"\n"
    "*PageRegion A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n"
    "*CloseUI: *PageRegion\n"
    "*DefaultImageableArea: Letter\n"
    "*ImageableArea Letter/US Letter: \"18 36 594 756\"\n"
    "*ImageableArea A4/A4: \"18 36 577 806\"\n"
    "*DefaultPaperDimension: Letter\n"
    "*PaperDimension Letter/US Letter: \"612 792\"\n"
    "*PaperDimension A4/A4: \"595 842\"\n"
    "*DefaultFont: Courier\n"
    "*Font Courier: Standard \"(002.004S)\" Standard ROM\n";

std::string TempPath(const std::string& name) {
  char dir[MAX_PATH];
  GetTempPathA(MAX_PATH, dir);
  return std::string(dir) + name;
}

bool WriteFile(const std::string& path, const char* text) {
  FILE* f = std::fopen(path.c_str(), "wb");
  if (!f) return false;
  std::fwrite(text, 1, std::strlen(text), f);
  std::fclose(f);
  return true;
}

void DeleteNamedPrinter(const std::string& name) {
  HANDLE printer = nullptr;
  PRINTER_DEFAULTSA access{nullptr, nullptr, PRINTER_ALL_ACCESS};
  if (OpenPrinterA(const_cast<char*>(name.c_str()), &printer, &access)) {
    DeletePrinter(printer);
    ClosePrinter(printer);
  }
}

}  // namespace

TestPrinter::TestPrinter() {
  std::string pid = std::to_string(GetCurrentProcessId());
  name_ = "KWE Test Printer " + pid;
  outputPath_ = TempPath("kwe_print_" + pid + ".ps");
  DeleteFileA(outputPath_.c_str());
  char previous[256] = "";
  DWORD size = sizeof previous;
  if (GetDefaultPrinterA(previous, &size)) previousDefault_ = previous;
  // The driver's files live in the printer-driver directory.
  char dir[MAX_PATH];
  DWORD needed = 0;
  if (!GetPrinterDriverDirectoryA(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(dir), sizeof dir,
                                  &needed))
    return;
  std::string description = std::string(dir) + "\\kwetest.ppd";
  if (!WriteFile(description, kDescription)) return;
  DRIVER_INFO_3A driver{};
  driver.cVersion = 3;
  driver.pName = const_cast<char*>(kDriverName);
  driver.pDriverPath = const_cast<char*>("wineps.drv");
  driver.pDataFile = description.data();
  driver.pConfigFile = const_cast<char*>("wineps.drv");
  AddPrinterDriverA(nullptr, 3, reinterpret_cast<BYTE*>(&driver));
  DeleteNamedPrinter(name_);
  PRINTER_INFO_2A info{};
  info.pPrinterName = name_.data();
  info.pPortName = outputPath_.data();  // a file name: the job is written there
  info.pDriverName = const_cast<char*>(kDriverName);
  info.pPrintProcessor = const_cast<char*>("WinPrint");
  info.pDatatype = const_cast<char*>("RAW");
  info.Attributes = PRINTER_ATTRIBUTE_LOCAL;
  HANDLE printer = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&info));
  if (!printer) return;
  ClosePrinter(printer);
  installed_ = SetDefaultPrinterA(name_.c_str()) != 0;
}

TestPrinter::~TestPrinter() {
  Remove();
  DeleteFileA(outputPath_.c_str());
}

void TestPrinter::Clear() { DeleteFileA(outputPath_.c_str()); }

void TestPrinter::Remove() {
  if (!installed_) return;
  DeleteNamedPrinter(name_);
  if (!previousDefault_.empty()) SetDefaultPrinterA(previousDefault_.c_str());
  installed_ = false;
}

std::string TestPrinter::Output() const {
  std::string text;
  if (FILE* f = std::fopen(outputPath_.c_str(), "rb")) {
    char buffer[4096];
    size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, f)) > 0) text.append(buffer, n);
    std::fclose(f);
  }
  return text;
}

int TestPrinter::Pages() const {
  std::string out = Output();
  size_t at = out.rfind("%%Pages: ");
  if (at == std::string::npos || out.compare(at, 16, "%%Pages: (atend)") == 0) return -1;
  return std::atoi(out.c_str() + at + 9);
}

// Wine's PostScript driver draws TrueType text glyph by glyph: "/H
// glyphshow". Letters and digits spell themselves; a space is "space" or
// "uni00A0".
std::vector<std::string> TestPrinter::PageTexts() const {
  std::vector<std::string> pages;
  std::istringstream lines(Output());
  std::string line;
  while (std::getline(lines, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.rfind("%%Page: ", 0) == 0) pages.emplace_back();
    size_t at = line.find(" glyphshow");
    if (pages.empty() || line.empty() || line[0] != '/' || at == std::string::npos) continue;
    std::string glyph = line.substr(1, at - 1);
    if (glyph.size() == 1)
      pages.back() += glyph;
    else if (glyph == "space" || glyph == "uni00A0")
      pages.back() += ' ';
  }
  return pages;
}

}  // namespace kwe_test
