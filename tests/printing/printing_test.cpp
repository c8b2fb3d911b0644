// The Printing Manager through the DLL on a real Windows printer driver:
// Wine's PostScript driver writing each job into a file. Every case installs
// its own printer as Windows' default and removes it (these cases run one at
// a time, since a default printer changes the fonts other programs see).
#include "Printing.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "KWESession.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "QuickdrawPictures.h"
#include "printing/test_printer.h"
#include "support/dialog_user.h"
#include "support/test_host.h"

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

// Every page is opened by the program; only those in the job's range reach
// the printer, each with what was drawn on it. The page's port measures in
// points: text is as wide as on screen.
TEST_F(PrinterTest, PagesInTheJobsRangeReachThePrinter) {
  static SInt16 onScreen;
  TextSize(12);
  onScreen = StringWidth(reinterpret_cast<const unsigned char*>("\x0bHello world"));
  const std::vector<std::string> pages = {"Page one", "Page two", "Page three"};
  struct Row {
    SInt16 first, last;
    std::vector<std::string> printed;
  } rows[] = {{1, iPrPgMax, {"Page one", "Page two", "Page three"}},
              {2, 2, {"Page two"}},
              {2, 9, {"Page two", "Page three"}}};
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.first) + ".." + std::to_string(row.last));
    (**hPrint).prJob.iFstPage = row.first;
    (**hPrint).prJob.iLstPage = row.last;
    ASSERT_EQ(
        PrintDocument(pages,
                      [](int) {
                        GrafPtr port = nullptr;
                        GetPort(&port);
                        EXPECT_EQ(Show(port->portRect), "0,0,720,576");
                        TextSize(12);
                        EXPECT_NEAR(
                            StringWidth(reinterpret_cast<const unsigned char*>("\x0bHello world")),
                            onScreen, onScreen / 5 + 2);
                      }),
        noErr);
    EXPECT_EQ(printer.Pages(), int(row.printed.size()));
    EXPECT_EQ(printer.PageTexts(), row.printed);
  }
  GrafPtr current = nullptr;
  GetPort(&current);
  EXPECT_EQ(current, screen) << "the program's port is current again";
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
  EXPECT_EQ(PrOpenDoc(hPrint, nullptr, nullptr), nullptr) << "one document at a time";
  EXPECT_EQ(PrError(), paramErr);
  PrSetError(noErr);
  TPrPort other{};
  PrOpenPage(&other, nullptr);
  EXPECT_EQ(PrError(), paramErr);
  PrSetError(noErr);
  PrClosePage(port);
  EXPECT_EQ(PrError(), paramErr) << "no page is open";
  PrSetError(noErr);
  PrOpenPage(port, nullptr);
  PrCloseDoc(nullptr);
  EXPECT_EQ(PrError(), paramErr);
  PrSetError(noErr);
  PrCloseDoc(port);  // closes the open page too
  EXPECT_EQ(PrError(), noErr);
  EXPECT_EQ(printer.Pages(), 1);
  TPrStatus status;
  std::memset(&status, 0xFF, sizeof status);
  PrPicFile(hPrint, port, nullptr, nullptr, &status);
  EXPECT_EQ(status.iTotPages, 0);
  EXPECT_EQ(status.hPrint, hPrint);
}

// PostScript a program hands over in picture comments reaches a PostScript
// printer as it stands, wrapped when the session asks for it.
TEST_F(PrinterTest, PostScriptCommentsPassStraightThrough) {
  const char mark[] = "\r% a program's own PostScript\r";
  for (bool wrapped : {false, true}) {
    KWE_SetFlags(0, 0, 0x0010, wrapped ? 0x0010 : 0);
    printer.Clear();
    TPPrPort port = PrOpenDoc(hPrint, nullptr, nullptr);
    ASSERT_NE(port, nullptr);
    PrOpenPage(port, nullptr);
    Handle data = NewHandle(sizeof mark - 1);
    std::memcpy(*data, mark, sizeof mark - 1);
    PicComment(190, 0, nullptr);
    PicComment(192, SInt16(sizeof mark - 1), data);
    PicComment(191, 0, nullptr);
    DisposeHandle(data);
    PrClosePage(port);
    PrCloseDoc(port);
    std::string out = printer.Output();
    EXPECT_NE(out.find("% a program's own PostScript"), std::string::npos) << wrapped;
    EXPECT_EQ(out.find("gsave 30 dict begin") != std::string::npos, wrapped);
  }
}

// A flip between RotateBegin and RotateEnd is done by the PostScript printer
// about the centre RotateCenter gave (in the printer's pixels), and undone
// at RotateEnd; a turn without a flip and a RotateEnd with nothing begun
// send nothing.
TEST_F(PrinterTest, RotationCommentsFlipAboutTheirCentre) {
  PrintDefault(hPrint);
  const struct {
    SInt16 flip, angle;
    const char* scale;  // null: nothing sent
  } cases[] = {{1, 0, " -1 1 scale "}, {2, 90, " 1 -1 scale "}, {0, 90, nullptr}};
  for (const auto& c : cases) {
    printer.Clear();
    TPPrPort port = PrOpenDoc(hPrint, nullptr, nullptr);
    ASSERT_NE(port, nullptr);
    PrOpenPage(port, nullptr);
    MoveTo(100, 50);
    Handle centre = NewHandle(8), begin = NewHandle(4);
    reinterpret_cast<Fixed*>(*centre)[0] = 10 << 16;  // 10 down
    reinterpret_cast<Fixed*>(*centre)[1] = 0;
    reinterpret_cast<SInt16*>(*begin)[0] = c.flip;
    reinterpret_cast<SInt16*>(*begin)[1] = c.angle;
    PicComment(202, 8, centre);
    PicComment(200, 4, begin);
    PicComment(201, 0, nullptr);
    PicComment(201, 0, nullptr);
    DisposeHandle(centre);
    DisposeHandle(begin);
    PrClosePage(port);
    PrCloseDoc(port);
    std::string out = printer.Output();
    if (!c.scale) {
      EXPECT_EQ(out.find("\r\ngsave\r\n"), std::string::npos);
      EXPECT_EQ(out.find("\r\ngrestore\r\n"), std::string::npos);
      continue;
    }
    size_t scale = out.find(c.scale);
    ASSERT_NE(scale, std::string::npos) << c.flip;
    int h = 0, v = 0;
    size_t gsave = out.rfind("\r\ngsave\r\n", scale);
    ASSERT_NE(gsave, std::string::npos) << c.flip;
    ASSERT_EQ(std::sscanf(out.c_str() + gsave + 9, "%d %d translate", &h, &v), 2) << c.flip;
    EXPECT_GT(h, 100) << "the printer's pixels, finer than 72 dots per inch";
    EXPECT_GT(v, 60);
    std::string undo = " " + std::to_string(-h) + " " + std::to_string(-v) + " translate";
    EXPECT_EQ(out.compare(scale + std::strlen(c.scale) - 1, undo.size(), undo), 0) << c.flip;
    size_t restore = out.find("\r\ngrestore\r\n", scale);
    ASSERT_NE(restore, std::string::npos) << c.flip;
    EXPECT_EQ(out.find("\r\ngrestore\r\n", restore + 1), std::string::npos)
        << "one restore for one begin";
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

TEST_F(PrinterTest, GdiObjectsStayFlatOverManyJobs) {
  ASSERT_EQ(PrintDocument({"Warm up"}), noErr);
  int before = LiveGdiObjects();
  for (int i = 0; i < 12; ++i) ASSERT_EQ(PrintDocument({"Again", "And again"}), noErr) << i;
  if (before >= 0) {
    EXPECT_LE(LiveGdiObjects(), before + 2);
  }
}

}  // namespace
}  // namespace kwe_test
