// Records bound to a Win32 "edit" control: the control edits and draws, and
// the record's text, length, selection and line starts follow it. The
// control holds ANSI text with CR-LF pairs; the record Macintosh text with
// carriage returns, so every offset crosses over by counting returns.
// Changes the record makes itself are applied to both sides, so the text is
// only read back when the user typed into the control.
#include <algorithm>
#include <vector>

#include "Memory.h"
#include "memory/character_conversion.h"
#include "text/textedit/te_internal.h"

using namespace kwe::textedit;

namespace {

constexpr UInt8 kReturn = 13;
// Room in the control for 32000 characters that are all returns (CR-LF).
constexpr int kControlLimit = 2 * kMaxText;

LRESULT Send(const TERec* r, UINT message, WPARAM w = 0, LPARAM l = 0) {
  return SendMessageA(r->hDispText, message, w, l);
}

std::vector<char> ToControl(const UInt8* text, int length) {
  std::vector<char> ansi;
  ansi.reserve(size_t(length) + 16);
  for (int i = 0; i < length; ++i) {
    UInt8 c = kwe::text::MacToAnsiCharacter(text[i]);
    ansi.push_back(char(c));
    if (c == kReturn) ansi.push_back('\n');
  }
  ansi.push_back(0);
  return ansi;
}

// Where a record offset stands in the control: the line's start there plus
// the characters before it on the line (a line holds no return but its last).
int ControlOffset(const TERec* r, int offset) {
  if (r->nLines == 0) return 0;
  int line = std::min(LineOf(r, offset), r->nLines - 1);
  int lineStart = int(Send(r, EM_LINEINDEX, WPARAM(line)));
  int in = offset - r->lineStarts[line];
  const UInt8* text = TextOf(r);
  for (int i = r->lineStarts[line]; i < offset; ++i) in += text[i] == kReturn;
  return lineStart + in;
}

int RecordOffset(const TERec* r, int control) {
  int line = int(Send(r, EM_LINEFROMCHAR, WPARAM(control)));
  if (line >= r->nLines) line = std::max(0, r->nLines - 1);
  if (r->nLines == 0) return 0;
  int at = int(Send(r, EM_LINEINDEX, WPARAM(line))), offset = r->lineStarts[line];
  const UInt8* text = TextOf(r);
  while (at < control && offset < r->teLength) at += text[offset++] == kReturn ? 2 : 1;
  return offset;
}

// Line starts from line first on, as the control broke the lines.
void ReadLines(TEHandle te, int first) {
  TERec* r = *te;
  int count = int(Send(r, EM_GETLINECOUNT));
  first = std::clamp(first, 0, std::max<int>(r->nLines, 0));
  if (first > count) first = 0;
  std::vector<SInt16> starts(r->lineStarts, r->lineStarts + first);
  int offset = first ? r->lineStarts[first] : 0, at = -1;
  const UInt8* text = TextOf(r);
  for (int line = first; line < count && offset < r->teLength; ++line) {
    int control = int(Send(r, EM_LINEINDEX, WPARAM(line)));
    if (at < 0) at = control;
    while (at < control && offset < r->teLength) at += text[offset++] == kReturn ? 2 : 1;
    if (offset >= r->teLength) break;
    starts.push_back(SInt16(offset));
  }
  int n = int(starts.size());
  if (!EnsureLineRoom(te, n + 1))
    n = int((GetHandleSize(reinterpret_cast<Handle>(te)) - kRecordBase) / 2) - 1;
  r = *te;
  std::copy(starts.begin(), starts.begin() + n, r->lineStarts);
  r->nLines = SInt16(n);
  r->lineStarts[n] = r->teLength;
  int top = int(Send(r, EM_GETFIRSTVISIBLELINE));
  r->destRect.top = SInt16(r->viewRect.top - r->lineHeight * top);
  r->destRect.bottom =
      SInt16(std::max<int>(r->destRect.top + r->lineHeight * n, r->viewRect.bottom));
}

// Whether the control still breaks the unchanged text where the record
// says: its line count and the starts of the middle and last lines (a
// resized control breaks its lines anew).
bool LinesStillTrue(const TERec* r) {
  int n = r->nLines, count = int(Send(r, EM_GETLINECOUNT));
  bool afterReturn = r->teLength > 0 && TextOf(r)[r->teLength - 1] == kReturn;
  if (count != std::max(1, n + (afterReturn ? 1 : 0))) return false;
  for (int line : {n / 2, n - 1}) {
    if (line < 1) continue;
    int at = int(Send(r, EM_LINEINDEX, WPARAM(line)));
    int expected = at - int(Send(r, EM_LINEINDEX, WPARAM(line - 1)));
    int length = r->lineStarts[line] - r->lineStarts[line - 1];
    if (TextOf(r)[r->lineStarts[line] - 1] == kReturn) ++length;
    if (expected != length) return false;
  }
  return true;
}

// The control as the record last left it: its selection and width. A key
// or a refresh that finds it so has nothing to read back but the scroll
// position (one record at a time: the one being typed into).
struct Known {
  TEHandle te = nullptr;
  HWND control = nullptr;
  DWORD start = 0, end = 0;
  LONG width = 0;
};
Known g_known;

LONG WidthOf(HWND control) {
  RECT client;
  GetClientRect(control, &client);
  return client.right;
}

void Remember(TEHandle te, DWORD start, DWORD end) {
  g_known = Known{te, (*te)->hDispText, start, end, WidthOf((*te)->hDispText)};
}

bool AsLeft(TEHandle te) {
  const TERec* r = *te;
  if (g_known.te != te || g_known.control != r->hDispText) return false;
  DWORD start = 0, end = 0;
  Send(r, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  return start == g_known.start && end == g_known.end && WidthOf(r->hDispText) == g_known.width;
}

void ReadSelection(TEHandle te) {
  TERec* r = *te;
  DWORD start = 0, end = 0;
  Send(r, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  r->selStart = SInt16(RecordOffset(r, int(start)));
  r->selEnd = SInt16(RecordOffset(r, int(end)));
  Remember(te, start, end);
}

void ReadText(TERec* r) {
  int n = GetWindowTextLengthA(r->hDispText);
  std::vector<char> ansi(size_t(n) + 1);
  n = GetWindowTextA(r->hDispText, ansi.data(), n + 1);
  std::vector<UInt8> mac;
  mac.reserve(size_t(n));
  for (int i = 0; i < n && int(mac.size()) < kMaxText; ++i) {
    if (ansi[size_t(i)] == '\r' && i + 1 < n && ansi[size_t(i) + 1] == '\n') ++i;
    char c = ansi[size_t(i)] == '\n' ? '\r' : ansi[size_t(i)];
    mac.push_back(kwe::text::AnsiToMacCharacter(UInt8(c)));
  }
  SetHandleSize(r->hText, Size(mac.size()));
  if (MemError() != noErr) return;
  if (!mac.empty()) std::copy(mac.begin(), mac.end(), TextOf(r));
  r->teLength = SInt16(mac.size());
  Send(r, EM_SETMODIFY, FALSE);
}

// The control's [start, end) replaced by text, and the record's with it.
void Edit(TEHandle te, int start, int end, const UInt8* text, int length) {
  TERec* r = *te;
  length = std::clamp(length, 0, kMaxText - (r->teLength - (end - start)));
  std::vector<char> ansi = ToControl(text, length);
  // Typing over the selection the control already holds needs no EM_SETSEL.
  bool held = g_known.te == te && start == r->selStart && end == r->selEnd;
  int controlStart = held ? int(g_known.start) : ControlOffset(r, start);
  if (!held) Send(r, EM_SETSEL, WPARAM(controlStart), LPARAM(ControlOffset(r, end)));
  Send(r, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(ansi.data()));
  bool hasReturn = std::find(text, text + length, kReturn) != text + length;
  bool singleLine = hasReturn && !(GetWindowLongA(r->hDispText, GWL_STYLE) & ES_MULTILINE);
  if (singleLine || !SpliceText(r, start, end, text, length)) {
    // A single-line control keeps its own idea of a return: read it back.
    ReadText(r);
    ReadLines(te, 0);
    return ReadSelection(te);
  }
  Send(r, EM_SETMODIFY, FALSE);
  ReadLines(te, std::max(0, LineOf(r, start) - 1));
  // The control's caret stands after what it was given.
  r = *te;
  r->selStart = r->selEnd = SInt16(start + length);
  DWORD caret = DWORD(controlStart) + DWORD(ansi.size() - 1);
  Remember(te, caret, caret);
}

}  // namespace

namespace kwe::textedit {

// The record brought up to date with its control; false when the control
// is as the record left it (its scroll position not read).
static bool Sync(TEHandle te, bool force);

void BoundRefresh(TEHandle te, bool force) {
  if (!Sync(te, force) && Rec(te)) ReadLines(te, (*te)->nLines);
}

static bool Sync(TEHandle te, bool force) {
  TERec* r = Rec(te);
  // A control destroyed under the record (its dialog item disposed of)
  // leaves the record as it was last read.
  if (!r || !r->hText || !IsBound(r) || !IsWindow(r->hDispText)) return true;
  bool changed = force || Send(r, EM_GETMODIFY);
  if (!changed && AsLeft(te)) return false;
  // WM_SETTEXT from elsewhere clears the modified flag: a length that no
  // longer matches the record's text tells of it.
  const UInt8* text = TextOf(r);
  int expected = r->teLength + int(std::count(text, text + r->teLength, kReturn));
  changed = changed || GetWindowTextLengthA(r->hDispText) != expected;
  if (changed) ReadText(r);
  ReadLines(te, changed || !LinesStillTrue(*te) ? 0 : r->nLines);
  ReadSelection(te);
  return true;
}

void BoundReplace(TEHandle te, const UInt8* text, int length, bool before) {
  Sync(te, false);
  TERec* r = *te;
  if (!IsWindow(r->hDispText)) return;
  int start = r->selStart, end = r->selEnd, oldLength = r->teLength;
  Edit(te, start, before ? start : end, text, text ? length : 0);
  int added = (*te)->teLength - oldLength;
  if (before) BoundSelect(te, start + added, end + added);
}

void BoundSelect(TEHandle te, int start, int end) {
  TERec* r = *te;
  if (!IsWindow(r->hDispText)) return;
  end = std::min<int>(end, r->teLength);
  Send(r, EM_SETSEL, WPARAM(ControlOffset(r, start)), LPARAM(ControlOffset(r, end)));
  Send(r, EM_SCROLLCARET);
  ReadLines(te, LinesStillTrue(*te) ? r->nLines : 0);
  ReadSelection(te);
}

void BoundKey(TEHandle te, UInt8 key) {
  Sync(te, false);
  TERec* r = *te;
  if (!IsWindow(r->hDispText)) return;
  int start = r->selStart, end = r->selEnd;
  if (key == 8 || key == 127) {
    if (start == end) {
      if (key == 8 && start == 0) return;
      if (key == 127 && end == r->teLength) return;
      key == 8 ? --start : ++end;
    }
    return Edit(te, start, end, nullptr, 0);
  }
  if (key == kReturn && !(GetWindowLongA(r->hDispText, GWL_STYLE) & ES_MULTILINE)) return;
  if (r->teLength - (end - start) >= kMaxText) return;
  Edit(te, start, end, &key, 1);
}

void BoundSetText(TEHandle te, const UInt8* text, int length) {
  TERec* r = *te;
  if (!IsWindow(r->hDispText)) return;
  std::vector<char> ansi = ToControl(text, length);
  SendMessageA(r->hDispText, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(ansi.data()));
  if (!SpliceText(r, 0, r->teLength, text, length)) return BoundRefresh(te, true);
  Send(*te, EM_SETMODIFY, FALSE);
  ReadLines(te, 0);
  ReadSelection(te);
}

}  // namespace kwe::textedit

KWE_API TEHandle KWE_CALL KWE_TENewBound(HWND edit, const Rect* viewRect) {
  if (!edit || !viewRect) return nullptr;
  TEHandle te = TENew(viewRect, viewRect);
  if (!te) return nullptr;
  TERec* r = *te;
  r->hDispText = edit;
  TEXTMETRICA tm{};
  HDC dc = GetDC(edit);
  HGDIOBJ old = SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageA(edit, WM_GETFONT, 0, 0)));
  GetTextMetricsA(dc, &tm);
  SelectObject(dc, old);
  ReleaseDC(edit, dc);
  r->lineHeight = SInt16(tm.tmHeight + tm.tmExternalLeading);
  r->fontAscent = SInt16(tm.tmAscent + tm.tmExternalLeading);
  SendMessageA(edit, EM_LIMITTEXT, kControlLimit, 0);
  BoundRefresh(te, true);
  return te;
}

KWE_API void KWE_CALL KWE_SethTEfromhWnd(TEHandle hTE, Boolean force) { BoundRefresh(hTE, force); }

namespace kwe::textedit {

void ForgetBound(TEHandle te) {
  if (g_known.te == te) g_known = Known{};
}

}  // namespace kwe::textedit

KWE_API void KWE_CALL KWE_MaintainTEFocus(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || !IsBound(r)) return;
  if (GetFocus() != r->hDispText) SetFocus(r->hDispText);
  Send(r, EM_SETSEL, WPARAM(ControlOffset(r, r->selStart)), LPARAM(ControlOffset(r, r->selEnd)));
  Send(r, EM_SCROLLCARET);
}
