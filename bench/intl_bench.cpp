// The International Utilities' dates against Windows' own: IUDateString of
// a date against GetDateFormatA of the same date and picture, short and long.
#include <windows.h>

#include "Packages.h"
#include "bench_support.h"

namespace {

constexpr int kCalls = 20000;
constexpr LCID kEnglish = 0x0409;

}  // namespace

int main() {
  kwe_bench::Session session;
  DateTimeRec d{1999, 3, 5, 10, 30, 0, 0};
  UInt32 secs = 0;
  DateToSeconds(&d, &secs);
  SYSTEMTIME st{};
  st.wYear = 1999;
  st.wMonth = 3;
  st.wDay = 5;
  st.wDayOfWeek = 5;
  st.wHour = 10;
  st.wMinute = 30;
  Str255 result;
  char text[256];
  struct Form {
    const char* what;
    DateForm form;
    const char* picture;
  };
  for (Form f : {Form{"IUDateString short vs GetDateFormatA M/d/yy", shortDate, "M/d/yy"},
                 Form{"IUDateString long vs GetDateFormatA dddd, MMMM d, yyyy", longDate,
                      "dddd, MMMM d, yyyy"}}) {
    kwe_bench::CompareByRound(
        f.what, 15, kCalls, 1e6, "us",
        [&] {
          for (int i = 0; i < kCalls; ++i)
            IUDateString(secs + UInt32(i % 7) * 86400, f.form, result);
        },
        [&] {
          for (int i = 0; i < kCalls; ++i) {
            st.wDay = WORD(5 + i % 7);
            GetDateFormatA(kEnglish, 0, &st, f.picture, text, sizeof text);
          }
        });
  }
  return 0;
}
