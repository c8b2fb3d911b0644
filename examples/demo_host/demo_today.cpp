#include "demo_today.h"

#include <cstdio>

#include "DateTimeUtils.h"
#include "Memory.h"
#include "Packages.h"
#include "Scrap.h"

namespace {

std::string Text(const unsigned char* s) {
  return std::string(reinterpret_cast<const char*>(s) + 1, s[0]);
}

}  // namespace

std::vector<std::string> TodayAndScrapLines() {
  std::vector<std::string> lines;
  UInt32 now = 0;
  GetDateTime(&now);
  Str255 shortForm, longForm, time;
  IUDateString(now, shortDate, shortForm);
  IUDateString(now, longDate, longForm);
  IUTimeString(now, false, time);
  lines.push_back("Today: " + Text(shortForm) + ", or " + Text(longForm) + ", at " + Text(time));

  // The greeting goes to the clipboard as 'TEXT'; the host's clipboard
  // procedure makes it CF_TEXT for every other program.
  static const char greeting[] = "Hello from the Toolbox, by way of the Windows clipboard.";
  const ResType text = 0x54455854;  // 'TEXT'
  SInt16 before = InfoScrap()->scrapCount;
  ZeroScrap();
  SInt32 put = PutScrap(SInt32(sizeof greeting - 1), text, greeting);
  Handle back = NewHandle(0);
  SInt32 offset = 0;
  SInt32 length = GetScrap(back, text, &offset);
  char line[200];
  std::snprintf(line, sizeof line, "PutScrap -> %ld, GetScrap -> %ld bytes; scrapCount %d -> %d",
                long(put), long(length), before, InfoScrap()->scrapCount);
  lines.push_back(line);
  if (length > 0)
    lines.push_back("On the clipboard: \"" + std::string(*back, size_t(length)) + "\"");
  DisposeHandle(back);
  return lines;
}
