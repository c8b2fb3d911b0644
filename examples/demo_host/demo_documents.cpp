#include "demo_documents.h"

#include <windows.h>

#include <cstdio>
#include <cstring>

#include "Files.h"
#include "Fonts.h"
#include "KWEFileTypes.h"
#include "KWESession.h"
#include "Memory.h"
#include "Printing.h"
#include "Quickdraw.h"
#include "StandardFile.h"
#include "demo_main_window.h"

namespace {

constexpr OSType kText = 'TEXT';
constexpr char kDocumentName[] = "Tour notes.txt";
constexpr char kNotes[] =
    "Notes of the Toolbox tour\rSaved with StandardPutFile, read back with StandardGetFile.\r";

// The host's file-type table: plain text documents are 'TEXT'.
const KWEFileTypeEntry kFileTypes[] = {{kText, {'T', 'X', 'T'}, "Text document"}, {0, {}, ""}};

// What the timer does to the common dialog that is up: type a name into its
// file-name field, save it as a screenshot, press its default button.
struct Script {
  std::vector<std::string> steps;  // "name:...", "shot:...", "ok"
  size_t next = 0;
  bool shot = false;
};
Script g_script;

BOOL CALLBACK MatchCommonDialog(HWND window, LPARAM found) {
  char name[16] = "";
  GetClassNameA(window, name, sizeof name);
  if (std::strcmp(name, "#32770") != 0 || !IsWindowVisible(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

HWND CommonDialog() {
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), MatchCommonDialog, reinterpret_cast<LPARAM>(&found));
  return found;
}

// The file-name field: an edit (edt1, 0x480) or the edit of a combo box
// (cmb13, 0x47c).
HWND NameField(HWND dialog) {
  if (HWND field = GetDlgItem(dialog, 0x480)) return field;
  HWND combo = GetDlgItem(dialog, 0x47c);
  return combo ? FindWindowExA(combo, nullptr, "Edit", nullptr) : nullptr;
}

void CALLBACK PlayUser(HWND, UINT, UINT_PTR, DWORD) {
  HWND dialog = CommonDialog();
  if (!dialog || g_script.next >= g_script.steps.size()) return;
  const std::string& step = g_script.steps[g_script.next++];
  if (step.rfind("name:", 0) == 0)
    SendMessageA(NameField(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(step.c_str() + 5));
  else if (step.rfind("shot:", 0) == 0)
    g_script.shot = SaveWindowScreenshot(dialog, step.substr(5));
  else
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}

// Runs call (a modal dialog) with the timer playing steps.
template <typename Call>
void WithUser(std::vector<std::string> steps, Call call) {
  g_script = Script{std::move(steps)};
  UINT_PTR timer = SetTimer(nullptr, 0, 300, PlayUser);
  call();
  KillTimer(nullptr, timer);
}

std::string Name(const FSSpec& spec) {
  return std::string(reinterpret_cast<const char*>(spec.name) + 1, spec.name[0]);
}

std::string SaveNotes(const std::string& screenshot) {
  StandardFileReply reply{};
  WithUser({"name:" + std::string(kDocumentName), "shot:" + screenshot, "ok"}, [&] {
    StandardPutFile(reinterpret_cast<const UInt8*>("\x0ASave notes"),
                    reinterpret_cast<const UInt8*>("\x08Untitled"), &reply);
  });
  std::printf("%s %s\n", g_script.shot ? "Save dialog saved to" : "Could not save",
              screenshot.c_str());
  if (!reply.sfGood) return "Save dialog: cancelled";
  FSpDelete(&reply.sfFile);  // a replaced document starts empty
  SInt16 file = 0;
  SInt32 count = SInt32(std::strlen(kNotes));
  OSErr err = FSpCreate(&reply.sfFile, 'KWEJ', kText, reply.sfScript);
  if (err == noErr) err = FSpOpenDF(&reply.sfFile, fsRdWrPerm, &file);
  if (err == noErr) err = FSWrite(file, &count, kNotes);
  if (file) FSClose(file);
  char line[200];
  std::snprintf(line, sizeof line, "StandardPutFile: \"%s\" on volume %d, %ld bytes written (%d)",
                Name(reply.sfFile).c_str(), int(reply.sfFile.vRefNum), long(count), int(err));
  return line;
}

std::string OpenNotes() {
  StandardFileReply reply{};
  SFTypeList types = {kText};
  WithUser({"name:" + std::string(kDocumentName), "ok"},
           [&] { StandardGetFile(nullptr, 1, types, &reply); });
  if (!reply.sfGood) return "Open dialog: cancelled";
  SInt16 file = 0;
  char text[200] = "";
  SInt32 count = sizeof text - 1;
  OSErr err = FSpOpenDF(&reply.sfFile, fsRdPerm, &file);
  if (err == noErr) FSRead(file, &count, text);
  if (file) FSClose(file);
  char* end = std::strchr(text, '\r');
  if (end) *end = 0;
  char type[5] = {char(reply.sfType >> 24), char(reply.sfType >> 16), char(reply.sfType >> 8),
                  char(reply.sfType), 0};
  char line[300];
  std::snprintf(line, sizeof line, "StandardGetFile: \"%s\", type '%s', first line \"%s\"",
                Name(reply.sfFile).c_str(), type, text);
  return line;
}

// A page of text and shapes in the printing port's 72 dots to the inch.
void DrawPage(const Rect& page) {
  TextFont(times);
  TextSize(18);
  MoveTo(36, 48);
  DrawString(reinterpret_cast<const UInt8*>("\x13Toolbox Tour, page 1"));
  TextSize(12);
  MoveTo(36, 72);
  DrawString(reinterpret_cast<const UInt8*>("\x2APrinted through the Printing Manager's port"));
  Rect box{96, 36, 216, 196};
  FrameRect(&box);
  Rect oval{96, 220, 216, 380};
  FillOval(&oval, &qd.gray);
  FrameOval(&oval);
  Rect round{240, 36, 340, 380};
  PenSize(3, 3);
  FrameRoundRect(&round, 24, 24);
  PenNormal();
  for (SInt16 x = 36; x <= 380; x += 24) {
    MoveTo(x, 360);
    LineTo(SInt16(416 - x), 440);
  }
  MoveTo(36, SInt16(page.bottom - 24));
  DrawString(
      reinterpret_cast<const UInt8*>("\x0B"
                                     "End of page"));
}

std::string PrintPage() {
  PrOpen();
  if (PrError() != noErr) {
    PrClose();
    return "PrOpen: no printer (" + std::to_string(PrError()) + ")";
  }
  THPrint record = reinterpret_cast<THPrint>(NewHandleClear(sizeof(TPrint)));
  PrintDefault(record);
  bool chosen = false;
  WithUser({"ok"}, [&] { chosen = PrJobDialog(record); });
  int pages = 0;
  if (chosen) {
    (**record).prJob.bJDocLoop = bSpoolLoop;  // the page is spooled, then printed
    TPPrPort port = PrOpenDoc(record, nullptr, nullptr);
    if (PrError() == noErr) {
      PrOpenPage(port, nullptr);
      if (PrError() == noErr) DrawPage((**record).prInfo.rPage), ++pages;
      PrClosePage(port);
    }
    PrCloseDoc(port);
    TPrStatus status;
    if ((**record).prJob.bJDocLoop == bSpoolLoop && PrError() == noErr)
      PrPicFile(record, nullptr, nullptr, nullptr, &status);
  }
  SInt16 err = PrError();
  char line[200];
  std::snprintf(line, sizeof line, "PrJobDialog %s; %d page printed on a %dx%d page, PrError %d",
                chosen ? "OK" : "cancelled", pages, (**record).prInfo.rPage.right,
                (**record).prInfo.rPage.bottom, int(err));
  DisposeHandle(reinterpret_cast<Handle>(record));
  PrClose();
  return line;
}

}  // namespace

std::vector<std::string> RunDocumentsDemo(const std::string& dialogScreenshot) {
  KWE_Set_Tovel(kFileTypes, nullptr);
  std::vector<std::string> lines;
  lines.push_back(SaveNotes(dialogScreenshot));
  lines.push_back(OpenNotes());
  lines.push_back(PrintPage());
  return lines;
}
