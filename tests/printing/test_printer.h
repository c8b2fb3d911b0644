// The printer the Printing Manager tests print on: Wine's PostScript driver
// writing each job into a file, installed as Windows' default printer for
// one test and removed after it, and a fixture with PrOpen done and a
// default print record.
#pragma once
#include <gtest/gtest.h>
#include <windows.h>
#include <winspool.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "KWESession.h"
#include "Memory.h"
#include "Printing.h"
#include "Quickdraw.h"
#include "support/test_host.h"

namespace kwe_test {

// Letter at 300 dots per inch, imageable from a quarter inch (18 points) in
// on the sides and half an inch at top and bottom.
inline constexpr char kDescription[] =
    "*PPD-Adobe: \"4.3\"\n"
    "*ModelName: \"KWE Test Printer\"\n"
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
    "*CloseUI: *PageSize\n"
    "*DefaultImageableArea: Letter\n"
    "*ImageableArea Letter/US Letter: \"18 36 594 756\"\n"
    "*DefaultPaperDimension: Letter\n"
    "*PaperDimension Letter/US Letter: \"612 792\"\n"
    "*DefaultFont: Courier\n"
    "*Font Courier: Standard \"(002.004S)\" Standard ROM\n";

inline void DeleteNamedPrinter(const std::string& name) {
  HANDLE printer = nullptr;
  PRINTER_DEFAULTSA access{nullptr, nullptr, PRINTER_ALL_ACCESS};
  if (OpenPrinterA(const_cast<char*>(name.c_str()), &printer, &access)) {
    DeletePrinter(printer);
    ClosePrinter(printer);
  }
}

// A PostScript printer whose port is a file, installed as Windows' default
// printer for one test and removed after it.
class TestPrinter {
 public:
  TestPrinter() {
    std::string pid = std::to_string(GetCurrentProcessId());
    char dir[MAX_PATH];
    GetTempPathA(MAX_PATH, dir);
    name_ = "KWE Test Printer " + pid;
    output_ = std::string(dir) + "kwe_print_" + pid + ".ps";
    Clear();
    char previous[256] = "";
    DWORD size = sizeof previous;
    if (GetDefaultPrinterA(previous, &size)) previous_ = previous;
    DWORD needed = 0;
    if (!GetPrinterDriverDirectoryA(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(dir), sizeof dir,
                                    &needed))
      return;
    std::string description = std::string(dir) + "\\kwetest.ppd";
    std::ofstream(description, std::ios::binary) << kDescription;
    DRIVER_INFO_3A driver{};
    driver.cVersion = 3;
    driver.pName = const_cast<char*>("KWE Test PostScript");
    driver.pDriverPath = driver.pConfigFile = const_cast<char*>("wineps.drv");
    driver.pDataFile = description.data();
    AddPrinterDriverA(nullptr, 3, reinterpret_cast<BYTE*>(&driver));
    DeleteNamedPrinter(name_);
    PRINTER_INFO_2A info{};
    info.pPrinterName = name_.data();
    info.pPortName = output_.data();
    info.pDriverName = driver.pName;
    info.pPrintProcessor = const_cast<char*>("WinPrint");
    info.pDatatype = const_cast<char*>("RAW");
    info.Attributes = PRINTER_ATTRIBUTE_LOCAL;
    HANDLE printer = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&info));
    if (!printer) return;
    ClosePrinter(printer);
    installed_ = SetDefaultPrinterA(name_.c_str()) != 0;
  }
  ~TestPrinter() {
    Remove();
    Clear();
  }
  void Remove() {
    if (!installed_) return;
    DeleteNamedPrinter(name_);
    if (!previous_.empty()) SetDefaultPrinterA(previous_.c_str());
    installed_ = false;
  }
  bool Installed() const { return installed_; }
  // The printer's own default DEVMODE with dmScale set to percent (100 is
  // no scaling), as the driver's properties would leave it; false when the
  // spooler keeps no DEVMODE.
  bool SetScale(short percent) {
    HANDLE printer = nullptr;
    PRINTER_DEFAULTSA access{nullptr, nullptr, PRINTER_ALL_ACCESS};
    if (!OpenPrinterA(name_.data(), &printer, &access)) return false;
    LONG size = DocumentPropertiesA(nullptr, printer, name_.data(), nullptr, nullptr, 0);
    std::vector<BYTE> mode(size > 0 ? size_t(size) : 0);
    auto* dm = reinterpret_cast<DEVMODEA*>(mode.data());
    bool ok = size > 0 && DocumentPropertiesA(nullptr, printer, name_.data(), dm, nullptr,
                                              DM_OUT_BUFFER) == IDOK;
    DWORD needed = 0;
    GetPrinterA(printer, 2, nullptr, 0, &needed);
    std::vector<BYTE> info(needed);
    ok = ok && needed && GetPrinterA(printer, 2, info.data(), needed, &needed);
    if (ok) {
      dm->dmScale = percent;
      dm->dmFields |= DM_SCALE;
      auto* level2 = reinterpret_cast<PRINTER_INFO_2A*>(info.data());
      level2->pDevMode = dm;
      level2->pSecurityDescriptor = nullptr;
      ok = SetPrinterA(printer, 2, info.data(), 0) != 0;
    }
    ClosePrinter(printer);
    return ok;
  }
  // Windows writes a new job over the old one without shortening the file.
  void Clear() { DeleteFileA(output_.c_str()); }
  std::string Output() const {
    std::ifstream in(output_, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }
  // The "%%Pages:" count of the finished job, -1 when there is none.
  int Pages() const {
    std::string out = Output();
    size_t at = out.rfind("%%Pages: ");
    return at == std::string::npos ? -1 : std::atoi(out.c_str() + at + 9);
  }
  // The text each page drew: Wine's driver shows TrueType text glyph by
  // glyph ("/H glyphshow"), a space as "space" or "uni00A0".
  std::vector<std::string> PageTexts() const {
    std::vector<std::string> pages;
    std::istringstream lines(Output());
    std::string line;
    while (std::getline(lines, line)) {
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

 private:
  std::string name_, output_, previous_;
  bool installed_ = false;
};

inline std::string Show(const Rect& r) {
  return std::to_string(r.top) + "," + std::to_string(r.left) + "," + std::to_string(r.bottom) +
         "," + std::to_string(r.right);
}

class PrinterTest : public SessionTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(printer.Installed());
    SessionTest::SetUp();
    InitGraf(&screen);
    PrOpen();
    hPrint = reinterpret_cast<THPrint>(NewHandleClear(sizeof(TPrint)));
    PrintDefault(hPrint);
  }
  void TearDown() override {
    DisposeHandle(reinterpret_cast<Handle>(hPrint));
    PrClose();
    SessionTest::TearDown();
  }

  // Draws each text on a page of its own, calling between(page) before the
  // page closes; answers PrError after PrCloseDoc.
  SInt16 PrintDocument(const std::vector<std::string>& pages, void (*between)(int page) = nullptr) {
    printer.Clear();
    TPPrPort port = PrOpenDoc(hPrint, nullptr, nullptr);
    if (!port) return PrError();
    for (size_t i = 0; i < pages.size(); ++i) {
      PrOpenPage(port, nullptr);
      MoveTo(72, 144);
      Str255 text{UInt8(pages[i].size())};
      std::memcpy(text + 1, pages[i].data(), pages[i].size());
      DrawString(text);
      if (between) between(int(i) + 1);
      PrClosePage(port);
    }
    PrCloseDoc(port);
    return PrError();
  }
  bool Landscape() {
    TGetRotnBlk rotation{};
    rotation.iOpCode = getRotnOp;
    rotation.hPrint = hPrint;
    PrGeneral(reinterpret_cast<Ptr>(&rotation));
    EXPECT_EQ(rotation.iError, noErr);
    return rotation.fLandscape;
  }

  TestPrinter printer;
  GrafPtr screen = nullptr;
  THPrint hPrint = nullptr;
};

}  // namespace kwe_test
