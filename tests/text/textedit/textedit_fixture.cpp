#include "text/textedit/textedit_fixture.h"

#include <sstream>

namespace kwe_test {

std::string TextOf(TEHandle te) {
  if (!te || !(*te)->hText || !*(*te)->hText) return {};
  return std::string(*(*te)->hText, size_t((*te)->teLength));
}

std::vector<int> StartsOf(TEHandle te) {
  return std::vector<int>((*te)->lineStarts, (*te)->lineStarts + (*te)->nLines + 1);
}

std::string RawText(HWND control) {
  std::string text(size_t(GetWindowTextLengthA(control)) + 1, '\0');
  text.resize(size_t(GetWindowTextA(control, &text[0], int(text.size()))));
  return text;
}

std::string ControlText(HWND control) {
  std::string text = RawText(control), out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    out += text[i] == '\n' ? '\r' : text[i];
  }
  return out;
}

int RecordOffsetOf(const std::string& raw, int offset) {
  int pairs = 0;
  for (int i = 0; i + 1 < offset && i + 1 < int(raw.size()); ++i)
    pairs += raw[size_t(i)] == '\r' && raw[size_t(i) + 1] == '\n';
  return offset - pairs;
}

void TextEditTest::SetUp() {
  WindowTest::SetUp();
  TEInit();
  window = Make(documentProc, {60, 60, 360, 460});
  SetPort(window);
  Pump();
}

void TextEditTest::TearDown() {
  for (TEHandle te : records) TEDispose(te);
  if (edit) DestroyWindow(edit);
  WindowTest::TearDown();
}

TEHandle TextEditTest::Record(Rect dest, Rect view, bool styled) {
  TEHandle te = styled ? TEStyleNew(&dest, &view) : TENew(&dest, &view);
  if (te) records.push_back(te);
  return te;
}

TEHandle TextEditTest::Bound(Rect place, DWORD style) {
  edit = CreateWindowExA(0, "edit", "", WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                         place.right - place.left, place.bottom - place.top, Hwnd(), nullptr,
                         TestInstance(), nullptr);
  SendMessageA(edit, WM_SETFONT, WPARAM(GetStockObject(ANSI_VAR_FONT)), FALSE);
  TEHandle te = KWE_TENewBound(edit, &place);
  if (te) records.push_back(te);
  return te;
}

::testing::AssertionResult TextEditTest::LinesTrue(TEHandle te) {
  std::string text = TextOf(te);
  std::vector<int> starts = StartsOf(te);
  const TERec& r = **te;
  int width = r.destRect.right - r.destRect.left;
  auto fail = [&](int line, const char* why) {
    std::ostringstream out;
    out << "line " << line << " of " << r.nLines << ": " << why << " in \"" << text << "\"";
    return ::testing::AssertionFailure() << out.str();
  };
  if (starts.back() != int(text.size())) return fail(r.nLines, "last entry is not teLength");
  if (text.empty() != (r.nLines == 0)) return fail(0, "empty text and line count disagree");
  SetPort(r.inPort);
  TextFont(r.txFont);
  TextSize(r.txSize);
  TextFace(r.txFace);
  for (int i = 0; i < r.nLines; ++i) {
    int a = starts[size_t(i)], b = starts[size_t(i) + 1];
    if (b <= a) return fail(i, "empty or backward line");
    std::string line = text.substr(size_t(a), size_t(b - a));
    size_t cr = line.find('\r');
    if (cr != std::string::npos && cr + 1 != line.size()) return fail(i, "return inside a line");
    size_t end = line.find_last_not_of(" \r");
    std::string shown = end == std::string::npos ? "" : line.substr(0, end + 1);
    bool oneWord = shown.find(' ') == std::string::npos;
    if (!oneWord && TextWidth(shown.data(), 0, SInt16(shown.size())) > width)
      return fail(i, "wider than destRect");
    if (cr == std::string::npos && i + 1 < r.nLines && !oneWord) {
      std::string next = text.substr(size_t(b));
      std::string word = next.substr(0, next.find_first_of(" \r"));
      std::string joined = line + word;
      if (TextWidth(joined.data(), 0, SInt16(joined.size())) <= width)
        return fail(i, "the next word would have fitted");
    }
  }
  Rect dest = r.destRect;
  TEHandle fresh = TENew(&dest, &dest);
  TESetText(text.data(), SInt32(text.size()), fresh);
  std::vector<int> all = StartsOf(fresh);
  TEDispose(fresh);
  if (all != starts) return fail(0, "starts differ from a fresh record's");
  return ::testing::AssertionSuccess();
}

::testing::AssertionResult TextEditTest::AgreesWithControl(TEHandle te) {
  HWND control = (*te)->hDispText;
  std::string raw = RawText(control), text = ControlText(control);
  if (TextOf(te) != text)
    return ::testing::AssertionFailure()
           << "text \"" << TextOf(te) << "\" against \"" << text << "\"";
  std::vector<int> starts;
  int count = int(SendMessageA(control, EM_GETLINECOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    int at = RecordOffsetOf(raw, int(SendMessageA(control, EM_LINEINDEX, WPARAM(i), 0)));
    if (at < int(text.size())) starts.push_back(at);
  }
  starts.push_back(int(text.size()));
  if (StartsOf(te) != starts) {
    std::ostringstream out;
    for (int s : StartsOf(te)) out << s << ' ';
    out << "against ";
    for (int s : starts) out << s << ' ';
    return ::testing::AssertionFailure() << "line starts " << out.str();
  }
  DWORD a = 0, b = 0;
  SendMessageA(control, EM_GETSEL, WPARAM(&a), LPARAM(&b));
  if ((*te)->selStart != RecordOffsetOf(raw, int(a)) ||
      (*te)->selEnd != RecordOffsetOf(raw, int(b)))
    return ::testing::AssertionFailure() << "selection " << (*te)->selStart << ".." << (*te)->selEnd
                                         << " against " << a << ".." << b;
  int first = int(SendMessageA(control, EM_GETFIRSTVISIBLELINE, 0, 0));
  if ((*te)->destRect.top != (*te)->viewRect.top - (*te)->lineHeight * first)
    return ::testing::AssertionFailure() << "destRect.top for first visible line " << first;
  return ::testing::AssertionSuccess();
}

}  // namespace kwe_test
