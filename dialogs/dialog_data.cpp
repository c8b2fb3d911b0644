#include "dialogs/dialog_data.h"

#include <algorithm>
#include <cstring>

namespace kwe::dialogs {
namespace {

SInt16 WordAt(const UInt8* p) {
  SInt16 v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

}  // namespace

bool Intersect(const Rect& a, const Rect& b, Rect* out) {
  *out = Rect{std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
              std::min(a.right, b.right)};
  return out->top < out->bottom && out->left < out->right;
}

bool Contains(const Rect& r, Point pt) {
  return pt.v >= r.top && pt.v < r.bottom && pt.h >= r.left && pt.h < r.right;
}

void Offset(Rect& r, int dh, int dv) {
  r = Rect{SInt16(r.top + dv), SInt16(r.left + dh), SInt16(r.bottom + dv), SInt16(r.right + dh)};
}

std::vector<ItemView> ReadItems(const UInt8* list, size_t size) {
  std::vector<ItemView> items;
  if (!list || size < 2) return items;
  int count = WordAt(list) + 1;
  size_t at = 2;
  for (int i = 0; i < count && size - at >= kItemHeaderSize; ++i) {
    ItemView v;
    v.offset = at;
    const UInt8* p = list + at;
    std::memcpy(&v.rect, p + 4, sizeof v.rect);
    v.type = p[12];
    v.length = p[13];
    // Only the length itself must lie inside: the pad byte of the last
    // item may be missing.
    if (size - at - kItemHeaderSize < v.length) break;
    v.data = p + kItemHeaderSize;
    items.push_back(v);
    at += std::min(ItemSize(v.length), size - at);
  }
  return items;
}

std::vector<UInt8> TrimmedItemList(const UInt8* list, size_t size) {
  std::vector<ItemView> items = ReadItems(list, size);
  std::vector<UInt8> out(2, 0);
  for (const ItemView& v : items) {
    size_t start = out.size();
    out.resize(start + ItemSize(v.length), 0);
    std::memcpy(out.data() + start, list + v.offset, kItemHeaderSize + v.length);
  }
  SInt16 countWord = SInt16(int(items.size()) - 1);
  std::memcpy(out.data(), &countWord, sizeof countWord);
  return out;
}

const TableEntry* PrivateTable::EntryOf(int item) const {
  for (const TableEntry& e : entries)
    if (e.item == item) return &e;
  return nullptr;
}

bool ReadPrivateTable(const UInt8* bytes, size_t size, PrivateTable* table) {
  *table = PrivateTable{};
  if (!bytes || size < kTableHeaderSize) return false;
  table->band = bytes[0];
  table->flags = bytes[1];
  int count = WordAt(bytes + 2);
  size_t room = (size - kTableHeaderSize) / kTableEntrySize;
  if (count < 0) count = 0;
  for (size_t i = 0; i < size_t(count) && i < room; ++i) {
    const UInt8* p = bytes + kTableHeaderSize + i * kTableEntrySize;
    table->entries.push_back(TableEntry{p[0], p[1], p[2], p[3]});
  }
  return true;
}

PrivateTable BuildPrivateTable(const std::vector<ItemView>& items) {
  PrivateTable table;
  int group = 0;
  bool inRun = false;
  for (size_t i = 0; i < items.size() && i < 255; ++i) {
    bool radio = TypeOf(items[i].type) == kRadioItem;
    if (radio && !inRun && group < 15) ++group;
    inRun = radio;
    if (!radio) continue;
    UInt8 n = UInt8(i + 1);
    table.entries.push_back(TableEntry{n, n, 0, UInt8(group << 4)});
  }
  return table;
}

std::vector<UInt8> TableBytes(const PrivateTable& table) {
  std::vector<UInt8> out{table.band, table.flags, 0, 0};
  SInt16 count = SInt16(table.entries.size());
  std::memcpy(out.data() + 2, &count, sizeof count);
  for (const TableEntry& e : table.entries)
    out.insert(out.end(), {e.item, e.target, e.mnemonic, e.flags});
  return out;
}

unsigned ExpandParameters(const UInt8* text, size_t length, const UInt8* const params[4],
                          UInt8 out[256]) {
  unsigned used = 0;
  size_t n = 0;
  for (size_t i = 0; i < length && n < 255; ++i) {
    UInt8 c = text[i];
    if (c == '^' && i + 1 < length && text[i + 1] >= '0' && text[i + 1] <= '3') {
      int k = text[++i] - '0';
      used |= 1u << k;
      const UInt8* p = params[k];
      for (size_t j = 1; p && j <= p[0] && n < 255; ++j) out[1 + n++] = p[j];
      continue;
    }
    out[1 + n++] = c;
  }
  out[0] = UInt8(n);
  return used;
}

}  // namespace kwe::dialogs
