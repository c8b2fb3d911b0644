#include "menus/menu_records.h"

namespace kwe::menus {

MenuShape WalkMenu(const UInt8* record, size_t size) {
  MenuShape shape;
  if (!record || size <= kTitleOffset) return shape;
  size_t at = kTitleOffset + 1 + record[kTitleOffset];
  if (at > size) return shape;
  shape.titleFits = true;
  shape.firstItem = at;
  while (at < size) {
    UInt8 length = record[at];
    if (length == 0) {
      shape.terminated = true;
      break;
    }
    size_t next = at + 1 + length + kItemTail;
    if (next > size) break;
    ++shape.count;
    at = next;
  }
  shape.end = at;
  return shape;
}

size_t ItemOffset(const UInt8* record, size_t size, int item) {
  if (item < 1) return 0;
  MenuShape shape = WalkMenu(record, size);
  if (item > shape.count) return 0;
  size_t at = shape.firstItem;
  for (int i = 1; i < item; ++i) at += 1 + record[at] + kItemTail;
  return at;
}

bool ReadItem(const UInt8* record, size_t size, int item, ItemView* view) {
  size_t at = ItemOffset(record, size, item);
  if (!at) return false;
  const UInt8* tail = record + at + record[at];
  *view =
      ItemView{record + at, tail[kIconField], tail[kKeyField], tail[kMarkField], tail[kStyleField]};
  return true;
}

ItemCursor::ItemCursor(const UInt8* record, size_t size) : record_(record) {
  MenuShape shape = WalkMenu(record, size);
  at_ = shape.firstItem;
  count_ = shape.count;
}

bool ItemCursor::Next(ItemView* view) {
  if (index_ >= count_) return false;
  const UInt8* tail = record_ + at_ + record_[at_];
  *view = ItemView{record_ + at_, tail[kIconField], tail[kKeyField], tail[kMarkField],
                   tail[kStyleField]};
  at_ += 1 + record_[at_] + kItemTail;
  ++index_;
  return true;
}

UInt32 ShiftInEnableBits(UInt32 flags, int after, int count, UInt32 disabledMask) {
  if (count <= 0) return flags;
  if (after < 0) after = 0;
  // Bits 0..after stay, the ones behind move up by count.
  UInt32 keep = after >= 31 ? flags : flags & ((2u << after) - 1);
  UInt32 behind = after >= 31 ? 0 : flags & ~((2u << after) - 1);
  UInt32 moved = count >= 32 ? 0 : behind << count;
  UInt32 added = 0;
  for (int i = 0; i < count; ++i) {
    int bit = after + 1 + i;
    if (bit < 32 && !(disabledMask >> i & 1)) added |= 1u << bit;
  }
  return keep | moved | added;
}

int MenuBarCount(const UInt8* data, size_t size) {
  if (!data || size < 2) return 0;
  SInt16 count = SInt16(ReadWord(data));
  if (count <= 0) return 0;
  size_t fit = (size - 2) / 2;
  return int(size_t(count) < fit ? size_t(count) : fit);
}

}  // namespace kwe::menus
