#include "menus/item_data.h"

#include <cstring>

#include "menus/menu_records.h"

namespace kwe::menus {

UInt8 StyleOfLetter(UInt8 letter) {
  switch (letter) {
    case 'B': return 1;
    case 'I': return 2;
    case 'U': return 4;
    case 'O': return 8;
    case 'S': return 16;
    default: return 0;
  }
}

std::vector<ParsedItem> ParseItemData(const UInt8* data, size_t length) {
  std::vector<ParsedItem> items;
  if (!data) return items;
  ParsedItem item;
  auto finish = [&] {
    if (item.text[0] == 0) item.text[item.text[0]++ + 1] = ' ';
    items.push_back(item);
    item = ParsedItem{};
  };
  for (size_t i = 0; i < length; ++i) {
    UInt8 c = data[i];
    if (c == ';' || c == '\r') {
      finish();
      continue;
    }
    if (c == '(') {
      item.disabled = true;
      continue;
    }
    if (c == '^' || c == '!' || c == '<' || c == '/') {
      if (i + 1 >= length) break;  // a metacharacter without its value
      UInt8 value = data[++i];
      if (c == '^') item.icon = UInt8(value - '0');
      if (c == '!') item.mark = value;
      if (c == '<') item.style |= StyleOfLetter(value);
      if (c == '/') item.key = value;
      continue;
    }
    if (item.text[0] < 255) item.text[++item.text[0]] = c;
  }
  // A separator at the very end, or no data at all, adds no blank item.
  bool empty =
      item.text[0] == 0 && !item.disabled && !item.icon && !item.key && !item.mark && !item.style;
  if (!empty || (items.empty() && length > 0)) finish();
  return items;
}

size_t ItemRecordSize(const ParsedItem& item) { return 1u + item.text[0] + kItemTail; }

void WriteItemRecord(const ParsedItem& item, UInt8* out) {
  std::memcpy(out, item.text, 1u + item.text[0]);
  UInt8* tail = out + item.text[0];
  tail[kIconField] = item.icon;
  tail[kKeyField] = item.key;
  tail[kMarkField] = item.mark;
  tail[kStyleField] = item.style;
}

}  // namespace kwe::menus
