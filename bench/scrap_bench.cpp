// The desk scrap against the raw clipboard calls: PutScrap and GetScrap of
// 1 MB of 'TEXT' through the demonstration host's clipboard procedure
// (character tables and line ends included) against SetClipboardData and
// GetClipboardData of the same text as CF_TEXT.
#include <windows.h>

#include <cstring>
#include <string>

#include "KWEScrap.h"
#include "KWESession.h"
#include "Memory.h"
#include "bench_support.h"
#include "host/shell.h"

namespace {

constexpr ResType kText = 0x54455854;  // 'TEXT'
constexpr size_t kSize = 1 << 20;

// Lines of 80 characters in the Macintosh's form, and as Windows holds them.
std::string MacText() {
  std::string text(kSize, ' ');
  for (size_t i = 0; i < kSize; ++i) text[i] = i % 80 == 79 ? '\r' : char('a' + i % 26);
  return text;
}

std::string WindowsText(const std::string& mac) {
  std::string text;
  text.reserve(mac.size() * 2);
  for (char c : mac) {
    text += c;
    if (c == '\r') text += '\n';
  }
  return text;
}

}  // namespace

int main() {
  HWND owner = CreateWindowA("STATIC", "", 0, 0, 0, 10, 10, nullptr, nullptr,
                             GetModuleHandleA(nullptr), nullptr);
  KWESessionRecord record{};
  record.size = sizeof record;
  record.instance = GetModuleHandleA(nullptr);
  record.mainWindow = owner;
  record.clipboardProcedure = reinterpret_cast<ProcPtr>(kwe::host::ClipboardProc);
  KWE_InitSession(&record);
  KWEGlobalsRecord globals{};
  globals.size = 4;
  KWE_InitGlobals(&globals);

  const std::string mac = MacText();
  const std::string windows = WindowsText(mac);
  Handle h = NewHandle(0);
  std::string copy(windows.size() + 1, 0);
  auto libraryPut = [&] {
    ZeroScrap();
    PutScrap(SInt32(mac.size()), kText, mac.data());
  };
  auto libraryGet = [&] {
    SInt32 offset;
    GetScrap(h, kText, &offset);
  };
  auto rawPut = [&] {
    OpenClipboard(owner);
    EmptyClipboard();
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, windows.size() + 1);
    char* p = static_cast<char*>(GlobalLock(memory));
    std::memcpy(p, windows.c_str(), windows.size() + 1);
    GlobalUnlock(memory);
    SetClipboardData(CF_TEXT, memory);
    CloseClipboard();
  };
  auto rawGet = [&] {
    OpenClipboard(owner);
    HANDLE data = GetClipboardData(CF_TEXT);
    const char* text = static_cast<const char*>(GlobalLock(data));
    std::memcpy(&copy[0], text, strnlen(text, GlobalSize(data)));
    GlobalUnlock(data);
    CloseClipboard();
  };
  kwe_bench::CompareByRound("ZeroScrap+PutScrap 1 MB TEXT vs CF_TEXT SetClipboardData", 41, 1, 1e3,
                            "ms", libraryPut, rawPut);
  kwe_bench::CompareByRound("GetScrap 1 MB TEXT vs CF_TEXT GetClipboardData", 41, 1, 1e3, "ms",
                            libraryGet, rawGet);
  kwe_bench::CompareByRound(
      "PutScrap+GetScrap 1 MB TEXT vs CF_TEXT Set+GetClipboardData", 41, 1, 1e3, "ms",
      [&] {
        libraryPut();
        libraryGet();
      },
      [&] {
        rawPut();
        rawGet();
      });
  bool same = GetHandleSize(h) == Size(mac.size()) && std::memcmp(*h, mac.data(), mac.size()) == 0;
  DisposeHandle(h);
  KWE_ExitSession();
  DestroyWindow(owner);
  return same ? 0 : 1;
}
