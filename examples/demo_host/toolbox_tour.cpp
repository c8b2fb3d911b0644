#include "toolbox_tour.h"

#include <cstdio>
#include <cstring>

#include "Events.h"
#include "Files.h"
#include "Gestalt.h"
#include "Memory.h"
#include "OSUtils.h"
#include "Resources.h"
#include "TextUtils.h"
#include "ToolUtils.h"
#include "demo_menus.h"
#include "document_windows.h"
#include "notes_window.h"

namespace {

std::string Line(const char* format, long a, long b = 0) {
  char text[160];
  std::snprintf(text, sizeof text, format, a, b);
  return text;
}

std::string FourCharacters(OSType t) {
  return {char(t >> 24), char(t >> 16), char(t >> 8), char(t)};
}

void AskGestalt(std::vector<std::string>& lines) {
  const OSType selectors[] = {'sysv', 'mach', 'proc', 'fpu ', 'qd  ', 'kbd ', 'scri', 'zzzz'};
  for (OSType selector : selectors) {
    SInt32 response = 0;
    OSErr err = Gestalt(selector, &response);
    std::string line = "Gestalt('" + FourCharacters(selector) + "')";
    line += err == noErr ? Line(" = 0x%lX", long(response)) : Line(" -> error %ld", err);
    lines.push_back(line);
  }
}

void AskSysEnvirons(std::vector<std::string>& lines) {
  SysEnvRec world;
  OSErr err = SysEnvirons(2, &world);
  lines.push_back(Line("SysEnvirons(2) -> %ld: machine type %ld,", err, world.machineType) +
                  Line(" system 0x%04lX, FPU %ld,", world.systemVersion, world.hasFPU) +
                  Line(" colour QuickDraw %ld", world.hasColorQD));
}

void AskDateTime(std::vector<std::string>& lines) {
  DateTimeRec now;
  GetTime(&now);
  UInt32 secs = 0;
  GetDateTime(&secs);
  char text[120];
  std::snprintf(text, sizeof text, "GetTime: %04d-%02d-%02d, day %d of the week; GetDateTime = %lu",
                now.year, now.month, now.day, now.dayOfWeek, static_cast<unsigned long>(secs));
  lines.push_back(text);
}

// Handles as a Macintosh program uses them: make, grow, measure, dispose.
void WorkWithHandles(std::vector<std::string>& lines) {
  SInt32 freeBefore = FreeMem();
  Handle h = NewHandleClear(1000);
  std::strcpy(*h, "kept across the resize");
  SetHandleSize(h, 64 * 1024);
  OSErr grown = MemError();
  lines.push_back(
      Line("NewHandleClear(1000), SetHandleSize to %ld -> %ld, ", GetHandleSize(h), grown) +
      "data " + (std::strcmp(*h, "kept across the resize") == 0 ? "kept" : "LOST"));
  Size grow = 0;
  lines.push_back(
      Line("Zone: FreeMem %ld bytes before, %ld with the handle; ", freeBefore, FreeMem()) +
      Line("MaxMem %ld", MaxMem(&grow)));
  DisposeHandle(h);
}

Str255 g_name;
StringPtr PascalName(const char* name) {
  g_name[0] = static_cast<unsigned char>(std::strlen(name));
  std::memcpy(g_name + 1, name, g_name[0]);
  return g_name;
}

// A document written, read back and found in its folder's catalog.
void WorkWithAFile(std::vector<std::string>& lines) {
  FSSpec spec;
  FSMakeFSSpec(0, 0, PascalName("TOURDOC.TXT"), &spec);
  FSpDelete(&spec);
  OSErr err = FSpCreate(&spec, 0x3F3F3F3F /* '????' */, 'TEXT', 0);
  SInt16 ref = 0;
  if (err == noErr) err = FSpOpenDF(&spec, fsRdWrPerm, &ref);
  const char text[] = "Written by FSWrite, read back by FSRead.";
  SInt32 count = sizeof text - 1;
  if (err == noErr) err = FSWrite(ref, &count, text);
  char back[64] = "";
  SInt32 readCount = sizeof back - 1;
  if (err == noErr) err = SetFPos(ref, fsFromStart, 0);
  if (err == noErr) FSRead(ref, &readCount, back);  // eofErr: the file is shorter than asked
  if (ref) FSClose(ref);
  lines.push_back(Line("File TOURDOC.TXT: %ld bytes written, %ld read: ", count, readCount) + "\"" +
                  back + "\"");

  std::string listing = "Its folder holds:";
  for (SInt16 index = 1; index <= 6; ++index) {
    Str255 name;
    CInfoPBRec pb;
    std::memset(&pb, 0, sizeof pb);
    pb.hFileInfo.ioNamePtr = name;
    pb.hFileInfo.ioVRefNum = spec.vRefNum;
    pb.hFileInfo.ioDirID = spec.parID;
    pb.hFileInfo.ioFDirIndex = index;
    if (PBGetCatInfo(&pb, false) != noErr) break;
    listing += " " + std::string(reinterpret_cast<char*>(name) + 1, name[0]);
  }
  lines.push_back(listing);
  FSpDelete(&spec);
}

std::string Text(const unsigned char* string) {
  return std::string(reinterpret_cast<const char*>(string) + 1, string[0]);
}

// The program's own resource file (demo_host.RSR) and the library's system
// file, read as a Macintosh program reads its resources.
void ReadOwnResources(std::vector<std::string>& lines, std::vector<Pattern>& patterns) {
  SInt16 first = InitResources();
  lines.push_back(Line("InitResources -> %ld; the current file is %ld, ", first, CurResFile()) +
                  Line("%ld types in the chain", CountTypes()));
  StringHandle greeting = GetString(128);
  lines.push_back("GetString(128): \"" + (greeting ? Text(*greeting) : std::string("?")) + "\"");
  lines.push_back("GetIndString(128, i):");
  for (SInt16 i = 1; i <= 3; ++i) {
    Str255 item;
    GetIndString(item, 128, i);
    if (i == 2) lines.push_back("   ");  // two lines, beside the windows
    lines.back() += (i == 2 ? " " : i > 1 ? " / " : " ") + Text(item);
  }
  if (PatHandle stripes = GetPattern(128)) patterns.push_back(**stripes);
  for (SInt16 i = 1; i <= 3; ++i) {
    Pattern tile;
    GetIndPattern(&tile, 128, i);
    patterns.push_back(tile);
  }
  Pattern gray;
  GetIndPattern(&gray, 0, 3);  // from the system file: the standard gray
  patterns.push_back(gray);
  lines.push_back(
      Line("Patterns: 'PAT ' 128, 'PAT#' 128 items 1-3 and the system's gray"
           " ('PAT#' 0 item %ld):",
           3));
}

std::string Described(const EventRecord& e, bool& quit) {
  switch (e.what) {
    case mouseDown: return Line(" mouseDown at h %ld, v %ld;", e.where.h, e.where.v);
    case mouseUp: return " mouseUp;";
    case keyDown:
    case autoKey: {
      char c = static_cast<char>(e.message & charCodeMask);
      if (c == 0x1B) {
        quit = true;
        return " Escape (quit);";
      }
      return std::string(" keyDown '") + c + "'" +
             Line(" (key code 0x%02lX);", (e.message & keyCodeMask) >> 8);
    }
    case osEvt: return Line(" osEvt 0x%08lX;", long(e.message));
    default: return Line(" event %ld;", e.what);
  }
}

}  // namespace

std::vector<std::string> RunEventLoop() {
  std::vector<std::string> lines{"WaitNextEvent saw:"};
  UInt32 start = TickCount();
  int nulls = 0;
  bool quit = false;
  // After the Escape key the loop goes on until no event is left, so that
  // the windows' last updates are drawn.
  while (TickCount() - start < 5 * 1000 / 16) {
    EventRecord e;
    if (!WaitNextEvent(everyEvent, &e, quit ? 0 : 30, nullptr)) {
      HandleNotesEvent(e);
      if (quit) break;
      ++nulls;
      continue;
    }
    std::string said = HandleMenuEvent(e);
    if (said.empty()) said = HandleDocumentEvent(e);
    if (said.empty()) said = HandleNotesEvent(e);
    if (said.empty()) said = Described(e, quit);
    if (lines.back().size() + said.size() > 78) lines.push_back("   ");
    lines.back() += said;
  }
  lines.push_back(Line("(%ld null events while it waited; ", nulls) +
                  (quit ? "it ended on the Escape key)" : "no Escape key came)"));
  return lines;
}

void KeepRunning(UInt32 ticks) {
  UInt32 start = TickCount();
  while (TickCount() - start < ticks) {
    EventRecord e;
    if (WaitNextEvent(everyEvent, &e, 2, nullptr) && HandleDocumentEvent(e).empty())
      HandleNotesEvent(e);
  }
}

TourResult RunToolboxTour() {
  TourResult result;
  std::vector<std::string>& lines = result.lines;
  lines.push_back("A Macintosh program running on the Toolbox over Win32");
  lines.push_back("");
  AskGestalt(lines);
  AskSysEnvirons(lines);
  AskDateTime(lines);
  WorkWithHandles(lines);
  WorkWithAFile(lines);
  ReadOwnResources(lines, result.patterns);
  return result;
}
