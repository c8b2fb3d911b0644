// TextEdit against the Win32 edit control under it, in a visible library
// window of a visible main window:
//   typing 30,000 characters with TEKey (a library-drawn record, and a
//     record bound to an edit control) against the same characters sent as
//     WM_CHAR to a raw multi-line edit control of the same size and font,
//     in three rounds of 10,000;
//   TESetText of 30 KB + TECalText against WM_SETTEXT + EM_GETLINECOUNT.
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "KWEWindows.h"
#include "MacWindows.h"
#include "TextEdit.h"
#include "bench_support.h"
#include "host/shell.h"
#include "host_window_session.h"

namespace {

// The arguments may ask for fewer characters and rounds when looking into
// one figure.
int kRounds = 5;
int kCharacters = 30000;
int kSlices = 3;
constexpr DWORD kEditStyle = WS_CHILD | ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;
const Rect kView{10, 10, 300, 400};

void Pump() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
}

HWND EditControl(WindowPtr w, int left) {
  HWND edit = CreateWindowExA(0, "edit", "", kEditStyle, left, kView.top, kView.right - kView.left,
                              kView.bottom - kView.top, KWE_GethWnd(w), nullptr,
                              GetModuleHandleA(nullptr), nullptr);
  SendMessageA(edit, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(ANSI_VAR_FONT)), FALSE);
  SendMessageA(edit, EM_LIMITTEXT, 2 * kCharacters, 0);
  return edit;
}

// Wine's edit control takes up to a millisecond per WM_CHAR once it holds
// thousands of characters, so the 30,000 characters are typed once per side
// and kSlices rounds each time the next slice of them: every round types
// into the text the rounds before left, and the figures are per character.
void Typing(WindowPtr w, const std::string& text) {
  HWND raw = EditControl(w, 420);
  HWND bound = EditControl(w, 420);
  Rect view = kView;
  TEHandle drawn = TENew(&view, &view);
  TEHandle follows = KWE_TENewBound(bound, &view);
  TEActivate(drawn);
  int slice = int(text.size()) / kSlices;
  auto sliceOf = [&](int& next) {
    int from = next++ % kSlices * slice;
    return text.substr(size_t(from), size_t(slice));
  };
  for (TEHandle te : {drawn, follows}) {
    int nextLibrary = 0, nextRaw = 0;
    TESetText("", 0, te);
    SetWindowTextA(raw, "");
    kwe_bench::CompareByRound(
        te == drawn ? "TEKey typing (library-drawn) vs WM_CHAR"
                    : "TEKey typing (bound to an edit) vs WM_CHAR",
        kSlices, slice, 1e6, "us",
        [&] {
          for (char c : sliceOf(nextLibrary)) TEKey(SInt16(UInt8(c)), te);
          Pump();
        },
        [&] {
          for (char c : sliceOf(nextRaw)) SendMessageA(raw, WM_CHAR, WPARAM(UInt8(c)), 1);
          Pump();
        });
  }
  TEDispose(drawn);
  TEDispose(follows);
  DestroyWindow(raw);
  DestroyWindow(bound);
}

void SettingText(WindowPtr w, const std::string& text) {
  HWND raw = EditControl(w, 420);
  HWND bound = EditControl(w, 420);
  std::string crlf;
  for (char c : text) crlf += c == '\r' ? std::string("\r\n") : std::string(1, c);
  Rect view = kView;
  TEHandle drawn = TENew(&view, &view);
  TEHandle follows = KWE_TENewBound(bound, &view);
  auto setRaw = [&] {
    for (int i = 0; i < 10; ++i) {
      SendMessageA(raw, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(crlf.c_str()));
      SendMessageA(raw, EM_GETLINECOUNT, 0, 0);
    }
  };
  for (TEHandle te : {drawn, follows})
    kwe_bench::CompareByRound(
        te == drawn ? "TESetText 30 KB + TECalText (library-drawn) vs WM_SETTEXT"
                    : "TESetText 30 KB + TECalText (bound) vs WM_SETTEXT",
        3 * kRounds, 10, 1e3, "ms",
        [&] {
          for (int i = 0; i < 10; ++i) {
            TESetText(text.data(), SInt32(text.size()), te);
            TECalText(te);
          }
        },
        setRaw);
  TEDispose(drawn);
  TEDispose(follows);
  DestroyWindow(raw);
  DestroyWindow(bound);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1) kCharacters = std::max(100, std::atoi(argv[1]));
  if (argc > 2) kRounds = std::max(1, std::atoi(argv[2]));
  if (argc > 3) kSlices = std::max(1, std::atoi(argv[3]));
  kwe_bench::HostWindowSession session("TextEdit bench");
  static const unsigned char title[] = {5, 'B', 'e', 'n', 'c', 'h'};
  const Rect bounds{40, 40, 440, 900};
  WindowPtr w = NewWindow(nullptr, &bounds, title, true, documentProc, WindowPtr(-1), true, 0);
  SetPort(w);
  TEInit();
  Pump();
  std::string text = kwe_bench::Prose(kCharacters);
  Typing(w, text);
  SettingText(w, text);
  DisposeWindow(w);
  return 0;
}
