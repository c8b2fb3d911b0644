// The Printing Manager through the DLL on a real Windows printer driver:
// Wine's PostScript driver writing each job into a file. Every case installs
// its own printer as Windows' default and removes it (these cases run one at
// a time, since a default printer changes the fonts other programs see).
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <regex>

#include "QuickdrawPictures.h"
#include "printing/test_printer.h"
#include "support/dialog_user.h"

namespace kwe_test {
namespace {

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
  PrGeneral(nullptr);
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

TEST_F(PrinterTest, CallsOutOfOrderAreRefused) {
  TPPrPort port = PrOpenDoc(hPrint, nullptr, nullptr);
  ASSERT_NE(port, nullptr);
  auto refused = [](const char* what) {
    EXPECT_EQ(PrError(), paramErr) << what;
    PrSetError(noErr);
  };
  EXPECT_EQ(PrOpenDoc(hPrint, nullptr, nullptr), nullptr);
  refused("one document at a time");
  TPrPort other{};
  PrOpenPage(&other, nullptr);
  refused("a page on another port");
  PrClosePage(port);
  refused("no page is open");
  PrOpenPage(port, nullptr);
  PrCloseDoc(nullptr);
  refused("no port");
  PrCloseDoc(port);  // closes the open page too
  EXPECT_EQ(PrError(), noErr);
  EXPECT_EQ(printer.Pages(), 1);
  TPrStatus status;
  std::memset(&status, 0xFF, sizeof status);
  PrPicFile(hPrint, port, nullptr, nullptr, &status);
  EXPECT_EQ(status.iTotPages, 0);
  EXPECT_EQ(status.hPrint, hPrint);
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
