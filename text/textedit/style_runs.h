// The run table of a styled TextEdit record, as plain vectors: the runs
// (start character and style index, ordered, the end marker last) and the
// style table they point into, with the use counts that follow them. The
// record's handles are copied in, worked on here and copied back, so this
// code needs no Win32 and is fuzzed with the style scraps it reads.
#pragma once
#include <cstddef>
#include <functional>
#include <vector>

#include "TextEditStyles.h"

namespace kwe::textedit {

// Fills an entry's stHeight and stAscent for its font, face and size.
using MeasureStyle = std::function<void(STElement&)>;

struct RunTable {
  std::vector<StyleRun> runs;  // the end marker (teLength + 1) last
  std::vector<STElement> styles;
};

// The entry whose run holds offset: a run boundary belongs to the run that
// starts there. Never the end marker while another entry exists.
int RunAt(const RunTable& t, int offset);

// Font, face, size and colour alike (height and ascent are not compared).
bool SameStyle(const STElement& a, const STElement& b);

// The entry with these attributes, added at the end with a use count of 0
// when none has them; its height and ascent come from attrs when it has
// some, else from measure.
int FindOrAddStyle(RunTable& t, const STElement& attrs, const MeasureStyle& measure);

// One use fewer; an entry left unused is removed and the last entry takes
// its place (the runs that used it follow).
void ReleaseStyle(RunTable& t, int index);

// Makes offset a run boundary (a run that holds it splits); answers the
// entry that starts there.
int SplitAt(RunTable& t, int offset);

// n characters inserted at offset, styled by the elements (starts relative
// to offset; those at or past n are ignored, and none means the style the
// text at offset has). Later entries move on by n.
void InsertRuns(RunTable& t, int offset, int n, const std::vector<ScrpSTElement>& elements,
                const MeasureStyle& measure);

// n characters at start removed: their runs go, later entries move back.
void RemoveRuns(RunTable& t, int start, int n);

// Equal neighbours become one run; the end marker stays, and nothing is
// merged while fewer than three entries exist.
void MergeRuns(RunTable& t);

// The style scrap element of an entry, starting at start.
ScrpSTElement ElementOf(const STElement& s, int start);
STElement AttributesOf(const ScrpSTElement& e);

// A style scrap read from outside bytes (native order: scrpNStyles, then
// that many 20-byte elements). False when the bytes are too short, the count
// is negative or the starts are negative or out of order.
bool ReadStyleScrap(const void* bytes, size_t size, std::vector<ScrpSTElement>* out);
// The same as bytes.
std::vector<UInt8> WriteStyleScrap(const std::vector<ScrpSTElement>& elements);

// A table read from a record the application may have filled: false when
// its runs are out of order, do not end at length + 1 or name entries the
// table lacks; otherwise the use counts are counted again.
bool MendRunTable(RunTable& t, int length);

// Runs ordered from 0 to length + 1, style indexes in the table, use counts
// equal to the runs that use each entry.
bool RunTableConsistent(const RunTable& t, int length);

}  // namespace kwe::textedit
