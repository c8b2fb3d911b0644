// AppendMenu's item data and the item texts Win32 menus show, on arbitrary
// bytes: every item is a whole Pascal string that never ends the record
// early (no 0 length), written and walked back as the items parsed; the
// Win32 text has at most one mnemonic and every literal "&" doubled.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "menus/item_data.h"
#include "menus/menu_records.h"
#include "menus/menu_text.h"

using namespace kwe::menus;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 255) size = 255;  // item data is a Str255
  std::vector<UInt8> input(data, data + size);
  std::vector<ParsedItem> items = ParseItemData(input.data(), input.size());
  std::vector<UInt8> record(kTitleOffset, 0);
  record.push_back(0);  // no title
  for (const ParsedItem& item : items) {
    if (item.text[0] == 0) std::abort();
    size_t at = record.size();
    record.resize(at + ItemRecordSize(item));
    WriteItemRecord(item, record.data() + at);
  }
  record.push_back(0);
  MenuShape shape = WalkMenu(record.data(), record.size());
  if (shape.count != int(items.size()) || !shape.terminated) std::abort();

  UsedLetters used;
  TextOptions options;
  for (const ParsedItem& item : items) {
    std::string text = Win32MenuText(item.text + 1, item.text[0], &used, options);
    int mnemonics = 0;
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] != '&') continue;
      if (i + 1 < text.size() && text[i + 1] == '&') {
        ++i;
        continue;
      }
      ++mnemonics;
    }
    if (mnemonics > 1) std::abort();
    std::string key = AcceleratorText(item.key, item.style, "%s%s", "%", true);
    if (key.size() > 8) std::abort();
  }
  return 0;
}
