// The print record's draft and spool modes, banding and the printer's
// scale, through the DLL on Wine's PostScript driver printing into a file.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "KWESession.h"
#include "Printing.h"
#include "Quickdraw.h"
#include "QuickdrawPictures.h"
#include "printing/test_printer.h"

namespace kwe_test {
namespace {

// A printer set to reduce to half (its DEVMODE's dmScale) shows the program
// a page twice as large at the same resolution, and one that enlarges to
// twice a page half as large. The program's PostScript gets the printer's
// scale, and the font at the printer's dots per point either way.
TEST_F(PrinterTest, PrintersScaleSizesThePageAndThePostScript) {
  const struct {
    short scale;
    const char *page, *paper;
    SInt16 pageV;
    const char* scaling;  // null: none sent
  } rows[] = {{100, "0,0,720,576", "-36,-18,756,594", 1320, nullptr},
              {50, "0,0,1440,1152", "-72,-36,1512,1188", 2640, "\r\n0.5 0.5 scale\r\n"},
              {200, "0,0,360,288", "-18,-9,378,297", 660, "\r\n2 2 scale\r\n"}};
  KWE_SetFlags(0, 0, 0x0010, 0x0010);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.scale);
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
    PicComment(191, 0, nullptr);
    MoveTo(72, 144);
    DrawString(
        reinterpret_cast<const unsigned char*>("\x06"
                                               "Scaled"));
    PrClosePage(port);
    PrCloseDoc(port);
    ASSERT_EQ(PrError(), noErr);
    std::string out = printer.Output();
    EXPECT_NE(out.find("currentfont [4.16667 0 0 4.16667 0 (M) stringwidth pop -4.58333 mul]"),
              std::string::npos);
    if (row.scaling)
      EXPECT_NE(out.find(row.scaling), std::string::npos);
    else
      EXPECT_EQ(out.find(" scale\r\n"), std::string::npos);
    EXPECT_EQ(printer.PageTexts(), std::vector<std::string>{"Scaled"})
        << out.substr(out.find("%%Page: 1"), 1500);
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

class PrintModes : public PrinterTest {
 protected:
  // Opens a document in the record's mode and draws each text on a page.
  void Spool(const std::vector<std::string>& pages) {
    printer.Clear();
    TPPrPort port = PrOpenDoc(hPrint, nullptr, nullptr);
    ASSERT_NE(port, nullptr);
    for (const std::string& text : pages) {
      PrOpenPage(port, nullptr);
      MoveTo(72, 144);
      Str255 s{UInt8(text.size())};
      std::memcpy(s + 1, text.data(), text.size());
      DrawString(s);
      PrClosePage(port);
    }
    PrCloseDoc(port);
  }
  TPrStatus PicFile() {
    TPrStatus status;
    std::memset(&status, 0xFF, sizeof status);
    PrPicFile(hPrint, nullptr, nullptr, nullptr, &status);
    return status;
  }
};

// Draft pages reach the printer as they are drawn; spooled pages only when
// PrPicFile plays the spool file. Either way, banded or not, the printer
// gets the pages in the job's range with their text.
TEST_F(PrintModes, DraftAndSpoolLoopsBandedOrNotPrintTheSamePages) {
  const std::vector<std::string> pages = {"First", "Second", "Third"};
  for (SInt8 loop : {bDraftLoop, bSpoolLoop}) {
    for (bool banded : {false, true}) {
      for (SInt16 first : {1, 2}) {
        SCOPED_TRACE(std::string(loop == bSpoolLoop ? "spool" : "draft") +
                     (banded ? " banded" : "") + " from page " + std::to_string(first));
        KWE_SetFlags(0, 0, 0x0040, banded ? 0x0040 : 0);
        (**hPrint).prJob.bJDocLoop = loop;
        (**hPrint).prJob.iFstPage = first;
        (**hPrint).prJob.pIdleProc = CountIdle;
        size_t spoolsBefore = SpoolFiles().size();
        Spool(pages);
        ASSERT_EQ(PrError(), noErr);
        std::vector<std::string> expected(pages.begin() + (first - 1), pages.end());
        if (loop == bSpoolLoop) {
          EXPECT_EQ(printer.Pages(), -1) << "nothing printed before PrPicFile";
          EXPECT_EQ(SpoolFiles().size(), spoolsBefore + 1);
          g_idleCalls = 0;
          TPrStatus status = PicFile();
          EXPECT_EQ(PrError(), noErr);
          EXPECT_EQ(status.iTotPages, SInt16(expected.size()));
          EXPECT_EQ(status.iCurPage, SInt16(expected.size()));
          EXPECT_EQ(status.iCurBand, 1);
          EXPECT_EQ(status.hPrint, hPrint);
          EXPECT_EQ(status.hPic, nullptr) << "each page is gone once printed";
          EXPECT_GT(g_idleCalls, 0);
          EXPECT_EQ(SpoolFiles().size(), spoolsBefore) << "the spool file is deleted";
        }
        EXPECT_EQ(printer.Pages(), int(expected.size()));
        EXPECT_EQ(printer.PageTexts(), expected);
        // Nothing is left to play a second time.
        printer.Clear();
        TPrStatus again = PicFile();
        EXPECT_EQ(again.iTotPages, 0);
        EXPECT_EQ(printer.Pages(), -1);
      }
    }
  }
  KWE_SetFlags(0, 0, 0x0040, 0);
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
TEST_F(PrintModes, DamagedSpoolFilesStopWithSavPFil) {
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
    Spool({"Kept", "Lost"});
    ASSERT_EQ(PrError(), noErr);
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
    PicFile();
    EXPECT_EQ(PrError(), iPrSavPFil);
    EXPECT_EQ(std::max(printer.Pages(), 0), c.printed);
    EXPECT_EQ(GetFileAttributesA(path.c_str()), INVALID_FILE_ATTRIBUTES) << "deleted";
    PrSetError(noErr);
  }
}
}  // namespace
}  // namespace kwe_test
