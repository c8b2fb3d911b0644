// AppendMenu's item data: the text a program writes ("Open/O;(-;Quit/Q")
// turned into the items it describes. Items split at ";" or a return; the
// metacharacters "^" (icon), "!" (mark), "<" (style) and "/" (keyboard
// equivalent) take the character after them as their value, so a ";" or
// "(" right after one of them is that value, not a split or a disable; "("
// anywhere else disables the item.
#pragma once
#include <cstddef>
#include <vector>

#include "MacTypes.h"

namespace kwe::menus {

struct ParsedItem {
  UInt8 text[256] = {0};  // Pascal string
  UInt8 icon = 0, key = 0, mark = 0, style = 0;
  bool disabled = false;
};

// The Toolbox's style letters: B bold, I italic, U underline, O outline,
// S shadow; any other letter adds nothing.
UInt8 StyleOfLetter(UInt8 letter);

// An item without text is given a single blank (a 0 length byte would end
// the record's item list); a separator at the very end adds no item, and
// neither does empty data.
std::vector<ParsedItem> ParseItemData(const UInt8* data, size_t length);

// The bytes an item takes in the record: text, then icon, key, mark, style.
size_t ItemRecordSize(const ParsedItem& item);
void WriteItemRecord(const ParsedItem& item, UInt8* out);

}  // namespace kwe::menus
