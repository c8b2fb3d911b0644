// The Printing Manager through the DLL on a real Windows printer driver:
// Wine's PostScript driver writing each job into a file. Every case installs
// its own printer as Windows' default and removes it (these cases run one at
// a time, since a default printer changes the fonts other programs see).
#include "Printing.h"

#include <gtest/gtest.h>
#include <windows.h>
#include <winspool.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "KWESession.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "QuickdrawPictures.h"
#include "support/dialog_user.h"
#include "support/test_host.h"

namespace kwe_test {
namespace {

// Letter at 300 dots per inch, imageable from a quarter inch (18 points) in
// on the sides and half an inch at top and bottom.
constexpr char kDescription[] =
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

void DeleteNamedPrinter(const std::string& name) {
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

std::string Show(const Rect& r) {
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

// The test printer's Letter page as a program sees it at 72 dots per inch;
// damaged or foreign records are made whole, keeping the job's choices where
// they make sense.
TEST_F(PrinterTest, RecordDescribesThePrintersPageAndValidates) {
  ASSERT_EQ(PrError(), noErr);
  const TPrint& r = **hPrint;
  EXPECT_EQ(Show(r.prInfo.rPage), "0,0,720,576");
  EXPECT_EQ(Show(r.rPaper), "-36,-18,756,594");
  EXPECT_EQ(r.prStl.iPageV, 11 * iPrPgFract);
  EXPECT_EQ(r.prJob.iLstPage, iPrPgMax);
  EXPECT_EQ(r.prJob.bJDocLoop, bDraftLoop) << "PrPicFile runs no spool loop";
  EXPECT_FALSE(PrValidate(hPrint)) << "a fresh record needs nothing";
  const TPrint fresh = r;
  struct Damage {
    const char* what;
    void (*apply)(TPrint&);
    SInt16 first, last, copies;
  } damages[] = {
      {"old version", [](TPrint& p) { p.iPrVersion = 1; }, 1, iPrPgMax, 1},
      {"no resolution", [](TPrint& p) { p.prInfo.iHRes = 0; }, 1, iPrPgMax, 1},
      {"page too small", [](TPrint& p) { p.prInfo.rPage.bottom = 10; }, 1, iPrPgMax, 1},
      {"copies and range",
       [](TPrint& p) {
         p.prJob.iCopies = 0;
         p.prJob.iLstPage = -4;
       },
       1, iPrPgMax, 1},
      {"old record with a range",
       [](TPrint& p) {
         p.iPrVersion = 2;
         p.prJob.iFstPage = 3;
         p.prJob.iLstPage = 5;
         p.prJob.iCopies = 2;
       },
       3, 5, 2},
  };
  for (const Damage& d : damages) {
    SCOPED_TRACE(d.what);
    **hPrint = fresh;
    d.apply(**hPrint);
    EXPECT_TRUE(PrValidate(hPrint));
    EXPECT_EQ(Show(r.prInfo.rPage), "0,0,720,576");
    EXPECT_EQ(r.iPrVersion, iPrRelease);
    EXPECT_EQ(r.prJob.iFstPage, d.first);
    EXPECT_EQ(r.prJob.iLstPage, d.last);
    EXPECT_EQ(r.prJob.iCopies, d.copies);
  }
  // A handle too small for a record is left alone.
  Handle small = NewHandleClear(40);
  EXPECT_FALSE(PrValidate(reinterpret_cast<THPrint>(small)));
  EXPECT_EQ(PrError(), paramErr);
  PrSetError(noErr);
  PrintDefault(reinterpret_cast<THPrint>(small));
  EXPECT_EQ(PrError(), paramErr);
  DisposeHandle(small);
}

TEST_F(PrinterTest, PrGeneralOffersAndSetsThePrintersResolutions) {
  TGetRslBlk get{};
  get.iOpCode = getRslDataOp;
  PrGeneral(reinterpret_cast<Ptr>(&get));
  EXPECT_EQ(get.iError, noErr);
  EXPECT_EQ(get.xRslRg.iMax, 300);
  ASSERT_EQ(get.iRslRecCnt, 2);
  EXPECT_EQ(get.rgRslRec[1].iYRsl, 300);
  struct Row {
    SInt16 x, y, error;
    const char* page;
  } rows[] = {{300, 300, noErr, "0,0,3000,2400"},
              {144, 72, noErr, "0,0,720,1152"},
              {5000, 300, NoSuchRsl, "0,0,720,1152"},
              {72, 0, NoSuchRsl, "0,0,720,1152"},
              {72, 72, noErr, "0,0,720,576"}};
  for (const Row& row : rows) {
    TSetRslBlk set{};
    set.iOpCode = setRslOp;
    set.hPrint = hPrint;
    set.iXRsl = row.x;
    set.iYRsl = row.y;
    PrGeneral(reinterpret_cast<Ptr>(&set));
    EXPECT_EQ(set.iError, row.error) << row.x << "x" << row.y;
    EXPECT_EQ(Show((**hPrint).prInfo.rPage), row.page) << row.x << "x" << row.y;
  }
  EXPECT_FALSE(Landscape());
  TGnlData unknown{99, 0, 0};
  PrGeneral(reinterpret_cast<Ptr>(&unknown));
  EXPECT_EQ(unknown.iError, OpNotImpl);
}

// The status window's Cancel button, and Escape typed while a page is
// printing, end the job: PrError says so and later pages are not printed.
// The status window does not take the activation, so the key reaches the
// application's window, where only the library's pump can see it.
HWND g_keyboard;
void PressCancel(int page) {
  HWND status = FindWindowA("KWEPrintStatus", nullptr);
  ASSERT_NE(status, nullptr);
  if (page == 2) PostMessageA(GetDlgItem(status, IDCANCEL), BM_CLICK, 0, 0);
}
void PressEscape(int page) {
  ASSERT_NE(FindWindowA("KWEPrintStatus", nullptr), nullptr);
  if (page == 2) PostMessageA(g_keyboard, WM_KEYDOWN, VK_ESCAPE, 0);
}

TEST_F(PrinterTest, CancellingTheStatusWindowAbortsTheJob) {
  g_keyboard = mainWindow;
  for (auto press : {PressCancel, PressEscape}) {
    SInt16 error = PrintDocument({"One", "Two", "Three"}, press);
    EXPECT_EQ(error, iPrAbort) << (press == PressEscape ? "Escape" : "Cancel");
    EXPECT_LT(printer.Pages(), 2);
    EXPECT_EQ(FindWindowA("KWEPrintStatus", nullptr), nullptr);
    PrSetError(noErr);
  }
}

TEST_F(PrinterTest, JobDialogChoosesPagesAndCopies) {
  {
    DialogUser user([](HWND dialog) {
      SendMessageA(GetDlgItem(dialog, rad3), BM_CLICK, 0, 0);
      SetDlgItemTextA(dialog, edt1, "2");
      SetDlgItemTextA(dialog, edt2, "3");
      SetDlgItemTextA(dialog, edt3, "4");
      PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    });
    ASSERT_TRUE(PrJobDialog(hPrint));
    EXPECT_NE(user.Title(), "");
  }
  EXPECT_EQ((**hPrint).prJob.iFstPage, 2);
  EXPECT_EQ((**hPrint).prJob.iLstPage, 3);
  EXPECT_EQ((**hPrint).prJob.iCopies, 1) << "the printer makes the copies";
  ASSERT_EQ(PrintDocument({"A", "B", "C", "D"}), noErr);
  EXPECT_EQ(printer.PageTexts(), (std::vector<std::string>{"B", "C"}));

  TPrint before = **hPrint;
  {
    DialogUser user([](HWND dialog) {
      SendMessageA(GetDlgItem(dialog, rad1), BM_CLICK, 0, 0);
      PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_FALSE(PrJobDialog(hPrint));
  }
  EXPECT_EQ(std::memcmp(&before, *hPrint, sizeof before), 0)
      << "a cancelled dialog changes nothing";
  EXPECT_EQ(PrError(), noErr);
}

// The host's page-setup hook plays the user: it turns the page and
// presses OK as the dialog opens.
UINT_PTR CALLBACK ChooseLandscape(HWND dialog, UINT message, WPARAM, LPARAM) {
  if (message == WM_INITDIALOG) {
    PostMessageA(GetDlgItem(dialog, rad2), BM_CLICK, 0, 0);
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
  }
  return 0;
}

class StyleDialogTest : public PrinterTest {
  void FillRecord(KWESessionRecord& r) override {
    r.printSetupDialogHook = reinterpret_cast<ProcPtr>(ChooseLandscape);
  }
};

TEST_F(StyleDialogTest, PrinterTurnsThePageThroughTheHostsHook) {
  ASSERT_TRUE(PrStlDialog(hPrint));
  EXPECT_EQ(Show((**hPrint).prInfo.rPage), "0,0,576,720");
  EXPECT_TRUE(Landscape());
  // The choice lives in the record: a fresh PrOpen prints it the same way.
  PrClose();
  PrOpen();
  EXPECT_FALSE(PrValidate(hPrint));
  EXPECT_EQ(Show((**hPrint).prInfo.rPage), "0,0,576,720");
}

// One document at a time; PrCloseDoc prints a page left open.
TEST_F(PrinterTest, ASecondDocumentIsRefusedAndAnOpenPageIsPrinted) {
  TPPrPort port = PrOpenDoc(hPrint, nullptr, nullptr);
  ASSERT_NE(port, nullptr);
  EXPECT_EQ(PrOpenDoc(hPrint, nullptr, nullptr), nullptr);
  EXPECT_EQ(PrError(), paramErr);
  PrSetError(noErr);
  PrOpenPage(port, nullptr);
  PrCloseDoc(port);
  EXPECT_EQ(PrError(), noErr);
  EXPECT_EQ(printer.Pages(), 1);
}

// A picture comment with its data in a handle of its own.
void Comment(SInt16 kind, const void* data, size_t size) {
  Handle h = NewHandle(Size(size));
  std::memcpy(*h, data, size);
  PicComment(kind, SInt16(size), h);
  DisposeHandle(h);
}

// A flip between RotateBegin and RotateEnd is done by the PostScript printer
// about the centre RotateCenter gave (in the printer's pixels), and undone
// at RotateEnd; a turn without a flip and a RotateEnd with nothing begun
// send nothing.
TEST_F(PrinterTest, RotationCommentsFlipAboutTheirCentre) {
  const struct {
    SInt16 flip, angle;
    const char* scale;  // "": nothing sent
  } cases[] = {{1, 0, "-1 1"}, {2, 90, "1 -1"}, {0, 90, ""}};
  const std::regex flip(
      "\r\ngsave\r\n(\\d+) (\\d+) translate (-?1 -?1) scale (-?\\d+) (-?\\d+) translate\r\n");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.flip);
    printer.Clear();
    TPPrPort port = PrOpenDoc(hPrint, nullptr, nullptr);
    ASSERT_NE(port, nullptr);
    PrOpenPage(port, nullptr);
    MoveTo(100, 50);
    const Fixed centre[2] = {10 << 16, 0};  // 10 down
    const SInt16 begin[2] = {c.flip, c.angle};
    Comment(202, centre, sizeof centre);
    Comment(200, begin, sizeof begin);
    PicComment(201, 0, nullptr);
    PicComment(201, 0, nullptr);
    PrClosePage(port);
    PrCloseDoc(port);
    std::string out = printer.Output();
    std::smatch m;
    bool sent = std::regex_search(out, m, flip);
    ASSERT_EQ(sent, *c.scale != 0);
    size_t restore = out.find("\r\ngrestore\r\n");
    EXPECT_EQ(restore != std::string::npos, sent);
    if (!sent) continue;
    EXPECT_GT(restore, size_t(m.position(0)));
    EXPECT_EQ(out.find("\r\ngrestore\r\n", restore + 1), std::string::npos)
        << "one restore for one begin";
    EXPECT_EQ(m.str(3), c.scale);
    EXPECT_GT(std::stoi(m.str(1)), 100) << "the printer's pixels, finer than 72 dots per inch";
    EXPECT_GT(std::stoi(m.str(2)), 60);
    EXPECT_EQ(std::stoi(m.str(4)), -std::stoi(m.str(1)));
    EXPECT_EQ(std::stoi(m.str(5)), -std::stoi(m.str(2)));
  }
}

TEST_F(PrinterTest, WithoutAPrinterNothingPrints) {
  PrClose();
  printer.Remove();
  PrOpen();
  EXPECT_EQ(PrError(), fnfErr);
  PrintDefault(hPrint);
  EXPECT_EQ(Show((**hPrint).prInfo.rPage), "0,0,756,576") << "Letter with quarter-inch margins";
  EXPECT_EQ(PrOpenDoc(hPrint, nullptr, nullptr), nullptr);
  EXPECT_EQ(PrError(), fnfErr);
  EXPECT_FALSE(PrJobDialog(hPrint));
  EXPECT_FALSE(PrStlDialog(hPrint));
}

// A printer set to reduce to half (its DEVMODE's dmScale) shows the program
// a page twice as large at the same resolution, and one that enlarges to
// twice a page half as large. PostScript a program hands over in picture
// comments reaches the printer as it stands, wrapped when the session asks
// for it: then with the printer's scale and the font at the printer's dots
// per point.
TEST_F(PrinterTest, PrintersScaleSizesThePageAndThePostScript) {
  const struct {
    short scale;
    bool wrapped;
    const char *page, *paper;
    SInt16 pageV;
    const char* scaling;  // null: none sent
  } rows[] = {{100, false, "0,0,720,576", "-36,-18,756,594", 1320, nullptr},
              {100, true, "0,0,720,576", "-36,-18,756,594", 1320, nullptr},
              {50, true, "0,0,1440,1152", "-72,-36,1512,1188", 2640, "\r\n0.5 0.5 scale\r\n"},
              {200, true, "0,0,360,288", "-18,-9,378,297", 660, "\r\n2 2 scale\r\n"}};
  const char mark[] = "\r% a program's own PostScript\r";
  for (const auto& row : rows) {
    SCOPED_TRACE(::testing::Message() << row.scale << (row.wrapped ? " wrapped" : ""));
    KWE_SetFlags(0, 0, 0x0010, row.wrapped ? 0x0010 : 0);
    ASSERT_TRUE(printer.SetScale(row.scale));
    PrClose();
    PrOpen();
    EXPECT_TRUE(PrValidate(hPrint) || row.scale == 100) << "the page changed";
    const TPrint& r = **hPrint;
    EXPECT_EQ(Show(r.prInfo.rPage), row.page);
    EXPECT_EQ(Show(r.rPaper), row.paper);
    EXPECT_EQ(r.prInfo.iVRes, 72);
    EXPECT_EQ(r.prStl.iPageV, row.pageV);
    printer.Clear();
    TPPrPort port = PrOpenDoc(hPrint, nullptr, nullptr);
    ASSERT_NE(port, nullptr);
    PrOpenPage(port, nullptr);
    EXPECT_EQ(Show(port->gPort.portRect), row.page);
    PicComment(190, 0, nullptr);
    Comment(192, mark, sizeof mark - 1);
    PicComment(191, 0, nullptr);
    MoveTo(72, 144);
    DrawString(reinterpret_cast<const unsigned char*>("\x06Scaled"));
    PrClosePage(port);
    PrCloseDoc(port);
    ASSERT_EQ(PrError(), noErr);
    std::string out = printer.Output();
    EXPECT_NE(out.find("% a program's own PostScript"), std::string::npos);
    EXPECT_EQ(out.find("gsave 30 dict begin") != std::string::npos, row.wrapped);
    EXPECT_EQ(out.find("currentfont [4.16667 0 0 4.16667 0 (M) stringwidth pop -4.58333 mul]") !=
                  std::string::npos,
              row.wrapped);
    if (row.scaling)
      EXPECT_NE(out.find(row.scaling), std::string::npos);
    else
      EXPECT_EQ(out.find(" scale\r\n"), std::string::npos);
    EXPECT_EQ(printer.PageTexts(), std::vector<std::string>{"Scaled"});
  }
  KWE_SetFlags(0, 0, 0x0010, 0);
}

// Spool files in Windows' temporary directory, newest last.
std::vector<std::string> SpoolFiles() {
  char dir[MAX_PATH];
  GetTempPathA(MAX_PATH, dir);
  std::vector<std::string> files;
  WIN32_FIND_DATAA found;
  HANDLE search = FindFirstFileA((std::string(dir) + "kwp*.tmp").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return files;
  do files.push_back(std::string(dir) + found.cFileName);
  while (FindNextFileA(search, &found));
  FindClose(search);
  return files;
}

int g_idleCalls;
void KWE_CALL CountIdle() { ++g_idleCalls; }

TPrStatus PicFile(THPrint hPrint) {
  TPrStatus status;
  std::memset(&status, 0xFF, sizeof status);
  PrPicFile(hPrint, nullptr, nullptr, nullptr, &status);
  return status;
}

// Draft pages reach the printer as they are drawn; spooled pages only when
// PrPicFile plays the spool file. Either way, banded or not, every page is
// opened by the program and only those in the job's range reach the
// printer, each with its text. The page's port measures in points: text is
// as wide as on screen. GDI's objects stay flat over the jobs.
SInt16 g_onScreen;
void CheckPagePort(int) {
  GrafPtr port = nullptr;
  GetPort(&port);
  EXPECT_EQ(Show(port->portRect), "0,0,720,576");
  TextSize(12);
  EXPECT_NEAR(StringWidth(reinterpret_cast<const unsigned char*>("\x0bHello world")), g_onScreen,
              g_onScreen / 5 + 2);
}

TEST_F(PrinterTest, DraftAndSpoolLoopsBandedOrNotPrintTheJobsRange) {
  TextSize(12);
  g_onScreen = StringWidth(reinterpret_cast<const unsigned char*>("\x0bHello world"));
  const std::vector<std::string> pages = {"First", "Second", "Third"};
  const struct { SInt16 first, last; } ranges[] = {{1, iPrPgMax}, {2, 2}, {2, 9}};
  int gdi = -1;
  for (SInt8 loop : {bDraftLoop, bSpoolLoop}) {
    for (bool banded : {false, true}) {
      for (const auto& range : ranges) {
        SCOPED_TRACE(::testing::Message()
                     << (loop == bSpoolLoop ? "spool" : "draft") << (banded ? " banded" : "")
                     << " pages " << range.first << ".." << range.last);
        KWE_SetFlags(0, 0, 0x0040, banded ? 0x0040 : 0);
        (**hPrint).prJob.bJDocLoop = loop;
        (**hPrint).prJob.iFstPage = range.first;
        (**hPrint).prJob.iLstPage = range.last;
        (**hPrint).prJob.pIdleProc = CountIdle;
        size_t spoolsBefore = SpoolFiles().size();
        ASSERT_EQ(PrintDocument(pages, CheckPagePort), noErr);
        std::vector<std::string> expected(pages.begin() + (range.first - 1),
                                          pages.begin() + std::min<int>(range.last, 3));
        if (loop == bSpoolLoop) {
          EXPECT_EQ(printer.Pages(), -1) << "nothing printed before PrPicFile";
          EXPECT_EQ(SpoolFiles().size(), spoolsBefore + 1);
          g_idleCalls = 0;
          TPrStatus status = PicFile(hPrint);
          EXPECT_EQ(PrError(), noErr);
          EXPECT_EQ(status.iTotPages, SInt16(expected.size()));
          EXPECT_EQ(status.iCurPage, SInt16(expected.size()));
          EXPECT_EQ(status.hPic, nullptr) << "each page is gone once printed";
          EXPECT_GT(g_idleCalls, 0);
          EXPECT_EQ(SpoolFiles().size(), spoolsBefore) << "the spool file is deleted";
        }
        EXPECT_EQ(printer.Pages(), int(expected.size()));
        EXPECT_EQ(printer.PageTexts(), expected);
        // Nothing is left to play a second time.
        printer.Clear();
        EXPECT_EQ(PicFile(hPrint).iTotPages, 0);
        EXPECT_EQ(printer.Pages(), -1);
        if (gdi < 0) gdi = LiveGdiObjects();
      }
    }
  }
  EXPECT_LE(LiveGdiObjects(), gdi + 2);
  KWE_SetFlags(0, 0, 0x0040, 0);
  GrafPtr current = nullptr;
  GetPort(&current);
  EXPECT_EQ(current, screen) << "the program's port is current again";
  // The program's spool loop survives validation; the old application
  // loops print as drafts.
  (**hPrint).prJob.bJDocLoop = bSpoolLoop;
  PrValidate(hPrint);
  EXPECT_EQ((**hPrint).prJob.bJDocLoop, bSpoolLoop);
  (**hPrint).prJob.bJDocLoop = bUser1Loop;
  PrValidate(hPrint);
  EXPECT_EQ((**hPrint).prJob.bJDocLoop, bDraftLoop);
}

// A spool file cut short or damaged on disk prints the pages it holds whole
// and stops with iPrSavPFil; a missing one prints nothing.
TEST_F(PrinterTest, DamagedSpoolFilesStopWithSavPFil) {
  (**hPrint).prJob.bJDocLoop = bSpoolLoop;
  // Cut at: nothing, inside the header, inside the first page's count,
  // inside its picture, after it (one page whole); or the page count, the
  // mark or a page's length spoiled; or the file gone.
  const struct {
    const char* what;
    int keep;     // bytes kept; -1 all
    int spoilAt;  // byte set to 0xFF; -1 none
    bool remove;
    int printed;
  } cases[] = {
      {"empty", 0, -1, false, 0},
      {"header cut", 6, -1, false, 0},
      {"count cut", 14, -1, false, 0},
      {"picture cut", 40, -1, false, 0},
      {"second page cut", -2, -1, false, 1},
      {"mark spoiled", -1, 0, false, 0},
      {"page count spoiled", -1, 11, false, 0},
      {"length spoiled", -1, 15, false, 0},
      {"file gone", -1, -1, true, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    ASSERT_EQ(PrintDocument({"Kept", "Lost"}), noErr);
    std::vector<std::string> files = SpoolFiles();
    ASSERT_FALSE(files.empty());
    std::string path = files.back();
    std::string bytes;
    {
      std::ifstream in(path, std::ios::binary);
      bytes.assign(std::istreambuf_iterator<char>(in), {});
    }
    ASSERT_GT(bytes.size(), 40u);
    uint32_t first = 0;
    std::memcpy(&first, bytes.data() + 12, 4);
    size_t keep = c.keep == -1 ? bytes.size() : c.keep == -2 ? 12 + 4 + first + 10 : size_t(c.keep);
    bytes.resize(keep);
    if (c.spoilAt >= 0) bytes[size_t(c.spoilAt)] = char(0xFF);
    if (c.remove) {
      DeleteFileA(path.c_str());
    } else {
      std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    }
    printer.Clear();
    PicFile(hPrint);
    EXPECT_EQ(PrError(), iPrSavPFil);
    EXPECT_EQ(std::max(printer.Pages(), 0), c.printed);
    EXPECT_EQ(GetFileAttributesA(path.c_str()), INVALID_FILE_ATTRIBUTES) << "deleted";
    PrSetError(noErr);
  }
}
}  // namespace
}  // namespace kwe_test
