#include "toolbox_tour.h"

#include <cstdio>

#include "Gestalt.h"
#include "OSUtils.h"

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

}  // namespace

std::vector<std::string> RunToolboxTour() {
  std::vector<std::string> lines;
  lines.push_back("A Macintosh program running on the Toolbox over Win32");
  lines.push_back("");
  AskGestalt(lines);
  AskSysEnvirons(lines);
  AskDateTime(lines);
  return lines;
}
