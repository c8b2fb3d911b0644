// What the TextEdit files share: the record's fields and line starts, the
// port a record draws in, layout, highlighting, the style runs of styled
// records, and the edit-control side of bound records.
#pragma once
#include <windows.h>

#include <cstddef>
#include <vector>

#include "TextEdit.h"
#include "text/textedit/style_runs.h"

namespace kwe::textedit {

constexpr int kMaxText = teMaxLength;
// The line-start array and the styled record's line-height table grow by
// this many entries at a time.
constexpr int kLineStep = 64;
constexpr int kMostStyledLines = 16383;
constexpr Size kRecordBase = Size(offsetof(TERec, lineStarts));

inline TERec* Rec(TEHandle te) { return te && *te ? *te : nullptr; }
// A record with text; every call on anything else does nothing.
inline TERec* Usable(TEHandle te) {
  TERec* r = Rec(te);
  return r && r->hText ? r : nullptr;
}
inline bool IsStyled(const TERec* r) { return r->txSize == -1; }
inline bool IsBound(const TERec* r) { return r->hDispText != nullptr; }
// Never null: an empty handle has no storage, and reads as empty text.
inline UInt8* TextOf(const TERec* r) {
  static UInt8 none[1];
  return *r->hText ? reinterpret_cast<UInt8*>(*r->hText) : none;
}
inline bool AutoView(const TERec* r) { return (r->active & 2) != 0; }
inline bool Active(const TERec* r) { return (r->active & 1) != 0; }
inline bool Password(const TERec* r) { return (r->active & kweTEPasswordFlag) != 0; }

// Whether the character at is a break between words, by the record's
// word-break procedure (the library's own is answered without a call).
inline bool IsBreak(const TERec* r, int at) {
  const UInt8* text = TextOf(r);
  if (r->wordBreak == SimpleWordBreak || !r->wordBreak) return text[at] < 33;
  return r->wordBreak(reinterpret_cast<Ptr>(const_cast<UInt8*>(text)), SInt16(at)) != 0;
}

// Room for count line starts; false (nothing changed) when memory runs out.
bool EnsureLineRoom(TEHandle te, int count);

// ---- Layout (te_lines.cpp) ----
// Lines again from the line before the one holding changeAt, after the
// text there was replaced by inserted characters and the text after it
// moved by delta; the old line starts in unchanged text are shifted and
// reused once a new line start meets one. Answers the first line redone.
int Relayout(TEHandle te, int changeAt, int inserted, int delta);
int LineOf(const TERec* r, int offset);
// Top of a line and its height and ascent, in the port's coordinates.
int LineTop(TEHandle te, int line);
int LineHeightOf(TEHandle te, int line);
int LineAscentOf(TEHandle te, int line);
// Horizontal position of offset on its line, and the offset nearest h.
int OffsetX(TEHandle te, int line, int offset);
int OffsetAtX(TEHandle te, int line, int h);
// Pixel width of text[from, to) in the record's styles (port set up).
int MeasureSpan(TEHandle te, int from, int to);

// ---- The port (te_drawing.cpp) ----
// Makes the record's port current with its font, face, size and mode, and
// puts back the port and its text settings when it ends. A password
// record's text is measured and drawn as "*" meanwhile: the character
// conversion's password mode is on for the scope and back as it was after.
class PortScope {
 public:
  explicit PortScope(TEHandle te);
  ~PortScope();
  PortScope(const PortScope&) = delete;
  PortScope& operator=(const PortScope&) = delete;
  bool ok() const { return port_ != nullptr; }

 private:
  GrafPtr saved_ = nullptr, port_ = nullptr;
  SInt16 font_ = 0, size_ = 0, mode_ = 0;
  UInt8 face_ = 0;
  bool styled_ = false;
  bool password_ = false;
  RGBColor colour_{};
};
// Sets the port's font, face and size (and colour when colour is set).
void ApplyStyle(const STElement& s, bool colour);
// Inverts the selection (or shows or hides the caret) of an active record.
void HiliteSelection(TEHandle te);
// Shows or hides the caret of an active record with an empty selection.
void SetCaret(TEHandle te, bool shown);
// Redraws the lines from first to last (inclusive) inside the view and area
// (the view when null), with the selection shown on them when withHilite.
void DrawLines(TEHandle te, int first, int last, const Rect* area = nullptr,
               bool withHilite = true);

// ---- Editing (te_editing.cpp) ----
// The text handle and teLength with [start, end) replaced by length bytes;
// false (nothing changed) when memory runs out.
bool SpliceText(TERec* r, int start, int end, const UInt8* text, int length);
enum ReplaceFlags { kDraw = 1, kSelectInserted = 2 };
// Replaces [start, end) with length bytes, cut so that the text stays
// within 32000 characters; styled records take the runs of styles, or the
// null style, or the style at start. The selection ends as a caret after
// the new text (or holds it, with kSelectInserted); with kDraw the changed
// lines are drawn and the selection brought into view. Answers the length
// inserted.
int Replace(TEHandle te, int start, int end, const UInt8* text, int length,
            const std::vector<ScrpSTElement>* styles, int flags);
// The record being clicked, for SimpleClikProc.
extern TEHandle g_clicking;

// ---- Styled records (te_styles.cpp) ----
inline TEStyleHandle StylesOf(const TERec* r) {
  return IsStyled(r) ? reinterpret_cast<TEStyleHandle>(r->styleHandle) : nullptr;
}
bool LoadRuns(const TERec* r, RunTable* t);
bool StoreRuns(TERec* r, const RunTable& t);
// Height and ascent of a style, measured in the current port.
void MeasureInPort(STElement& s);
// The style of the run at offset (the null style's while the record holds
// only the end marker); an unstyled record's own font, face and size.
STElement StyleAt(const TERec* r, int offset);
// The style for text inserted at offset: the null style when it holds one,
// else the style at offset.
ScrpSTElement InsertionStyle(const TERec* r, int offset);
void ClearNullStyle(TERec* r);
// Keeps the line-height table in step with the lines (false: no memory).
bool FillLineHeights(TEHandle te);
void DisposeStyles(Handle styles);
// The style scrap of [start, end) as elements (empty for unstyled records).
std::vector<ScrpSTElement> StylesOfRange(const TERec* r, int start, int end);

// ---- Bound records (te_bound.cpp) ----
void BoundRefresh(TEHandle te, bool force);
// The selection replaced by text, or (before) the text put in front of it.
void BoundReplace(TEHandle te, const UInt8* text, int length, bool before = false);
void BoundSelect(TEHandle te, int start, int end);
void BoundKey(TEHandle te, UInt8 key);
void BoundSetText(TEHandle te, const UInt8* text, int length);
// A record going away: nothing remembered of its control may outlive it.
void ForgetBound(TEHandle te);

}  // namespace kwe::textedit
