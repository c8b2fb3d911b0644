// A document window with its port current and TEInit done, records made in
// it that the fixture disposes of, and readers of what a record holds and
// of what an edit control holds, in the record's terms.
#pragma once
#include <random>
#include <string>
#include <vector>

// <windows.h> first: Quickdraw.h then undoes the macros it lays over SetPort.
#include <windows.h>

#include "Memory.h"
#include "TextEdit.h"
#include "windows/windows_fixture.h"

namespace kwe_test {

std::string TextOf(TEHandle te);
std::vector<int> StartsOf(TEHandle te);
// The control's text as Windows holds it, and with CR-LF pairs as single
// returns.
std::string RawText(HWND edit);
std::string ControlText(HWND edit);
// A control offset in the record's terms (every CR-LF counts once).
int RecordOffsetOf(const std::string& controlText, int offset);

class TextEditTest : public WindowTest {
 protected:
  void SetUp() override;
  void TearDown() override;
  TEHandle Record(Rect dest, Rect view, bool styled = false);
  TEHandle Record(Rect both) { return Record(both, both); }
  // An edit control in the window and a record bound to it.
  TEHandle Bound(Rect place, DWORD style);
  void SetText(TEHandle te, const std::string& text) {
    TESetText(text.data(), SInt32(text.size()), te);
  }
  HWND Hwnd() { return KWE_GethWnd(window); }
  // Lines that a greedy word wrap of destRect makes, checked line by line:
  // no line wider than destRect but a lone word, each breaks before a word
  // that would not fit, returns end lines; and the same starts as a fresh
  // record given the whole text at once.
  ::testing::AssertionResult LinesTrue(TEHandle te);
  // Record against control: text, line starts (EM_LINEINDEX), selection
  // (EM_GETSEL), first visible line.
  ::testing::AssertionResult AgreesWithControl(TEHandle te);

  WindowPtr window = nullptr;
  HWND edit = nullptr;
  std::vector<TEHandle> records;
};

}  // namespace kwe_test
