// The bytes of a MenuInfo record, walked without trusting them: a 'MENU'
// resource comes from a file, so every length byte is checked against the
// record's size. Plain functions over bytes, shared with the Control
// Manager's pop-up menus and run by the fuzz target.
#pragma once
#include <cstddef>

#include "MacTypes.h"

namespace kwe::menus {

constexpr size_t kMenuIdOffset = 0;
constexpr size_t kMenuWidthOffset = 2;
constexpr size_t kMenuHeightOffset = 4;
constexpr size_t kMenuProcOffset = 6;
constexpr size_t kEnableFlagsOffset = 10;
constexpr size_t kTitleOffset = 14;
constexpr size_t kItemTail = 4;  // icon, keyboard equivalent, mark, style

// The four bytes after an item's text.
enum ItemField { kIconField = 1, kKeyField = 2, kMarkField = 3, kStyleField = 4 };

// Where the items lie. An item counts only when its text and its four bytes
// fit inside the record; the list ends at a 0 length byte or at the first
// item that does not fit (a record cut short keeps its whole items).
struct MenuShape {
  size_t firstItem = 0;     // offset of item 1's length byte
  int count = 0;            // whole items
  size_t end = 0;           // offset just past the last whole item
  bool terminated = false;  // a 0 length byte stands at end
  bool titleFits = false;
};

MenuShape WalkMenu(const UInt8* record, size_t size);

// The offset of item's (1-based) length byte, 0 when the record has no such
// whole item.
size_t ItemOffset(const UInt8* record, size_t size, int item);

// One whole item's bytes, read from the record.
struct ItemView {
  const UInt8* text = nullptr;  // the Pascal string, length byte first
  UInt8 icon = 0, key = 0, mark = 0, style = 0;
};
bool ReadItem(const UInt8* record, size_t size, int item, ItemView* view);

// The whole items in order, in one walk: for (ItemCursor c(r, n); c.Next(&v);).
class ItemCursor {
 public:
  ItemCursor(const UInt8* record, size_t size);
  bool Next(ItemView* view);
  int Index() const { return index_; }  // the item Next last gave, from 1

 private:
  const UInt8* record_;
  size_t at_;
  int index_ = 0;
  int count_;
};

inline UInt16 ReadWord(const UInt8* p) {
  UInt16 v;
  __builtin_memcpy(&v, p, 2);
  return v;
}
inline UInt32 ReadLong(const UInt8* p) {
  UInt32 v;
  __builtin_memcpy(&v, p, 4);
  return v;
}
inline void WriteWord(UInt8* p, UInt16 v) { __builtin_memcpy(p, &v, 2); }
inline void WriteLong(UInt8* p, UInt32 v) { __builtin_memcpy(p, &v, 4); }

// Enable bits: item 0 is the whole menu, items 1..31 their bit; items 32
// and on have none and count as enabled.
inline bool ItemBitSet(UInt32 flags, int item) { return item >= 32 || (flags >> item & 1) != 0; }
// Whether the item can be chosen: the menu and (below 32) the item enabled.
inline bool ItemEnabled(UInt32 flags, int item) { return (flags & 1) && ItemBitSet(flags, item); }

// The enable bits after count items were put in after item after: the bits
// of the items behind move up, the new items' bits are set unless disabled
// (bit i of the mask: new item i + 1 disabled), bits past 31 are dropped.
UInt32 ShiftInEnableBits(UInt32 flags, int after, int count, UInt32 disabledMask);

// A 'MBAR' resource: a count word, then that many menu IDs. The count of
// IDs that really follow the count word (never more than the data holds).
int MenuBarCount(const UInt8* data, size_t size);

}  // namespace kwe::menus
