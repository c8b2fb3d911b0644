// The bytes a dialog is made from, read without Windows: the item list of a
// 'DITL' (native order, as the Resource Manager converts it), the library's
// 'KWED' table of mnemonics, radio groups and tab order, and the "^0".."^3"
// expansion of ParamText. Every reader stays inside the bytes it is given.
#pragma once
#include <cstddef>
#include <vector>

#include "MacTypes.h"

namespace kwe::dialogs {

// Item types (the type byte & 127) and the disabled bit.
enum ItemType : UInt8 {
  kUserItem = 0,
  kButtonItem = 4,
  kCheckBoxItem = 5,
  kRadioItem = 6,
  kResourceControlItem = 7,
  kStaticTextItem = 8,
  kEditTextItem = 16,
  kIconItem = 32,
  kPictureItem = 64,
  kDisabledBit = 128
};
inline UInt8 TypeOf(UInt8 typeByte) { return UInt8(typeByte & 127); }

// Rectangle arithmetic on the items' rectangles.
bool Intersect(const Rect& a, const Rect& b, Rect* out);
bool Contains(const Rect& r, Point pt);
void Offset(Rect& r, int dh, int dv);

// One item of a list: where it starts and its fields.
struct ItemView {
  size_t offset = 0;  // of its 4-byte handle slot
  Rect rect{};
  UInt8 type = 0;  // with the disabled bit
  UInt8 length = 0;
  const UInt8* data = nullptr;
};
constexpr size_t kItemHeaderSize = 14;
inline size_t ItemSize(UInt8 length) {
  return kItemHeaderSize + ((size_t(length) + 1) & ~size_t(1));
}

// The items that lie whole in the list: the count word says count - 1 (so
// -1 and below mean none); a list that ends early keeps the items before
// the cut.
std::vector<ItemView> ReadItems(const UInt8* list, size_t size);
// The bytes of a list holding only its whole items, its count word set to
// match: what a dialog keeps as its item list.
std::vector<UInt8> TrimmedItemList(const UInt8* list, size_t size);

// The private table ('KWED', or built from the items).
enum TableFlag : UInt8 {
  kAlternativeFontFlag = 0x80,
  kTableTabOrderFlag = 0x40,
  kSwapFirstButtonsFlag = 0x20
};
enum EntryFlag : UInt8 { kComboBoxEntry = 0x01, kMultiLineEntry = 0x02 };
struct TableEntry {
  UInt8 item = 0;
  UInt8 target = 0;
  UInt8 mnemonic = 0;
  UInt8 flags = 0;
  int Group() const { return flags >> 4; }
};
struct PrivateTable {
  UInt8 band = 0;
  UInt8 flags = 0;
  std::vector<TableEntry> entries;
  const TableEntry* EntryOf(int item) const;
};
constexpr size_t kTableHeaderSize = 4;
constexpr size_t kTableEntrySize = 4;
// A 'KWED' as converted (count word native): the entries that lie whole in
// it; false when even the header is cut.
bool ReadPrivateTable(const UInt8* bytes, size_t size, PrivateTable* table);
// The table a dialog without 'KWED' gets: one entry per radio button, the
// consecutive ones forming a group (numbered from 1 in item order).
PrivateTable BuildPrivateTable(const std::vector<ItemView>& items);
std::vector<UInt8> TableBytes(const PrivateTable& table);

// ParamText's expansion: text with every "^0".."^3" replaced by that
// parameter (a null parameter is empty), cut at 255 characters, into out (a
// Pascal string). Answers the parameters it used as bits 0..3.
unsigned ExpandParameters(const UInt8* text, size_t length, const UInt8* const params[4],
                          UInt8 out[256]);

}  // namespace kwe::dialogs
