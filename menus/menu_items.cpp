// MenuInfo records: making them, their items and the item calls. Every call
// takes the record's bytes as they are (a 'MENU' resource may be cut short)
// and never reads or writes outside the handle.
#include <cstring>

#include "Memory.h"
#include "menus/item_data.h"
#include "menus/menu_manager.h"

namespace kwe::menus {

size_t RecordSize(MenuHandle m) {
  Size size = GetHandleSize(reinterpret_cast<Handle>(m));
  return size > 0 ? size_t(size) : 0;
}

bool Valid(MenuHandle m) {
  if (!m || !*m) return false;
  return WalkMenu(Bytes(m), RecordSize(m)).titleFits;
}

int ItemCount(MenuHandle m) { return Valid(m) ? WalkMenu(Bytes(m), RecordSize(m)).count : 0; }

bool Item(MenuHandle m, int item, ItemView* view) {
  return Valid(m) && ReadItem(Bytes(m), RecordSize(m), item, view);
}

namespace {

// The item's offset, 0 when there is no such item.
size_t OffsetOf(MenuHandle m, int item) {
  return Valid(m) ? ItemOffset(Bytes(m), RecordSize(m), item) : 0;
}

UInt8 ItemByte(MenuHandle m, int item, ItemField field) {
  size_t at = OffsetOf(m, item);
  return at ? Bytes(m)[at + Bytes(m)[at] + field] : 0;
}

void SetItemByte(MenuHandle m, int item, ItemField field, UInt8 value) {
  if (size_t at = OffsetOf(m, item)) Bytes(m)[at + Bytes(m)[at] + field] = value;
}

// Resizes the record so that the bytes from at on move by delta (positive:
// a gap opens at at; negative: -delta bytes at at go), keeping everything up
// to the end of the whole items and a terminating 0. False when the handle
// could not grow.
bool Splice(MenuHandle m, size_t at, long delta) {
  MenuShape shape = WalkMenu(Bytes(m), RecordSize(m));
  size_t tail = shape.end - at;  // the whole items behind at
  size_t newSize = size_t(long(shape.end) + delta) + 1;
  Handle h = reinterpret_cast<Handle>(m);
  if (delta < 0) std::memmove(Bytes(m) + at, Bytes(m) + at - delta, tail + delta);
  if (newSize != RecordSize(m)) {
    SetHandleSize(h, Size(newSize));
    // A record that cannot shrink keeps its bytes in place, ended early.
    if (delta > 0 && (MemError() != noErr || RecordSize(m) != newSize)) return false;
  }
  if (delta > 0) std::memmove(Bytes(m) + at + delta, Bytes(m) + at, tail);
  Bytes(m)[newSize - 1] = 0;
  return true;
}

// Puts items in after item after (clamped to the count), in order.
void InsertParsed(MenuHandle m, const std::vector<ParsedItem>& items, int after) {
  if (items.empty() || !Valid(m)) return;
  int count = ItemCount(m);
  if (after < 0) after = 0;
  if (after > count) after = count;
  size_t at = after == count ? WalkMenu(Bytes(m), RecordSize(m)).end : OffsetOf(m, after + 1);
  size_t bytes = 0;
  UInt32 disabled = 0;
  for (size_t i = 0; i < items.size(); ++i) {
    bytes += ItemRecordSize(items[i]);
    if (items[i].disabled && i < 32) disabled |= 1u << i;
  }
  if (!Splice(m, at, long(bytes))) return;
  for (const ParsedItem& item : items) {
    WriteItemRecord(item, Bytes(m) + at);
    at += ItemRecordSize(item);
  }
  WriteLong(Bytes(m) + kEnableFlagsOffset,
            ShiftInEnableBits(EnableFlags(m), after, int(items.size()), disabled));
  CalcMenuSize(m);
}

}  // namespace

void InsertPlainItems(MenuHandle m, const std::vector<std::string>& texts, int after) {
  std::vector<ParsedItem> items(texts.size());
  for (size_t i = 0; i < texts.size(); ++i) {
    size_t n = texts[i].size() < 255 ? texts[i].size() : 255;
    items[i].text[0] = UInt8(n);
    std::memcpy(items[i].text + 1, texts[i].data(), n);
    if (!n) items[i].text[++items[i].text[0]] = ' ';
  }
  InsertParsed(m, items, after);
}

}  // namespace kwe::menus

using namespace kwe::menus;

KWE_API MenuHandle KWE_CALL NewMenu(SInt16 menuID, ConstStr255Param menuTitle) {
  UInt8 length = menuTitle ? menuTitle[0] : 0;
  Handle h = NewHandleClear(Size(length) + 16);
  if (!h) return nullptr;
  auto m = reinterpret_cast<MenuHandle>(h);
  WriteWord(Bytes(m) + kMenuIdOffset, UInt16(menuID));
  WriteLong(Bytes(m) + kEnableFlagsOffset, 1);
  Bytes(m)[kTitleOffset] = length;
  if (length) std::memcpy(Bytes(m) + kTitleOffset + 1, menuTitle + 1, length);
  return m;
}

KWE_API void KWE_CALL AppendMen(MenuHandle menu, ConstStr255Param data) {
  if (data) InsertParsed(menu, ParseItemData(data + 1, data[0]), 0x7FFF);
}

KWE_API void KWE_CALL InsertMenuItem(MenuHandle theMenu, ConstStr255Param itemString,
                                     SInt16 afterItem) {
  if (!itemString || !Valid(theMenu)) return;
  // Several items go in as if each were inserted after afterItem in turn,
  // the last first: they end up in reverse order.
  std::vector<ParsedItem> items = ParseItemData(itemString + 1, itemString[0]);
  std::vector<ParsedItem> reversed(items.rbegin(), items.rend());
  InsertParsed(theMenu, reversed, afterItem);
}

KWE_API void KWE_CALL DeleteMenuItem(MenuHandle theMenu, SInt16 item) {
  size_t at = OffsetOf(theMenu, item);
  if (!at) return;
  Splice(theMenu, at, -long(1 + Bytes(theMenu)[at] + kItemTail));
  CalcMenuSize(theMenu);
}

KWE_API SInt16 KWE_CALL CountMItems(MenuHandle theMenu) { return SInt16(ItemCount(theMenu)); }

KWE_API void KWE_CALL GetMenuItemText(MenuHandle theMenu, SInt16 item, Str255 itemString) {
  if (!itemString) return;
  size_t at = OffsetOf(theMenu, item);
  itemString[0] = 0;
  if (at) std::memcpy(itemString, Bytes(theMenu) + at, 1u + Bytes(theMenu)[at]);
}

KWE_API void KWE_CALL SetMenuItemText(MenuHandle theMenu, SInt16 item,
                                      ConstStr255Param itemString) {
  size_t at = OffsetOf(theMenu, item);
  if (!at || !itemString) return;
  // An empty text would end the item list: the item keeps a blank.
  UInt8 text[256] = {1, ' '};
  if (itemString[0]) std::memcpy(text, itemString, 1u + itemString[0]);
  long delta = long(text[0]) - long(Bytes(theMenu)[at]);
  if (delta && !Splice(theMenu, at + 1, delta)) return;
  std::memcpy(Bytes(theMenu) + at, text, 1u + text[0]);
}

KWE_API void KWE_CALL GetItem(MenuHandle theMenu, SInt16 item, Str255 itemString) {
  GetMenuItemText(theMenu, item, itemString);
}

KWE_API void KWE_CALL SetItem(MenuHandle theMenu, SInt16 item, ConstStr255Param itemString) {
  SetMenuItemText(theMenu, item, itemString);
}

KWE_API void KWE_CALL GetItemIcon(MenuHandle theMenu, SInt16 item, SInt16* iconIndex) {
  if (iconIndex) *iconIndex = ItemByte(theMenu, item, kIconField);
}
KWE_API void KWE_CALL SetItemIcon(MenuHandle theMenu, SInt16 item, SInt16 iconIndex) {
  SetItemByte(theMenu, item, kIconField, UInt8(iconIndex));
}
KWE_API void KWE_CALL GetItemCmd(MenuHandle theMenu, SInt16 item, SInt16* cmdChar) {
  if (cmdChar) *cmdChar = ItemByte(theMenu, item, kKeyField);
}
KWE_API void KWE_CALL SetItemCmd(MenuHandle theMenu, SInt16 item, SInt16 cmdChar) {
  SetItemByte(theMenu, item, kKeyField, UInt8(cmdChar));
}
KWE_API void KWE_CALL GetItemMark(MenuHandle theMenu, SInt16 item, SInt16* markChar) {
  if (markChar) *markChar = ItemByte(theMenu, item, kMarkField);
}
KWE_API void KWE_CALL SetItemMark(MenuHandle theMenu, SInt16 item, SInt16 markChar) {
  SetItemByte(theMenu, item, kMarkField, UInt8(markChar));
}
KWE_API void KWE_CALL GetItemStyle(MenuHandle theMenu, SInt16 item, Style* chStyle) {
  if (chStyle) *chStyle = Style(ItemByte(theMenu, item, kStyleField));
}
KWE_API void KWE_CALL SetItemStyle(MenuHandle theMenu, SInt16 item, SInt16 chStyle) {
  SetItemByte(theMenu, item, kStyleField, UInt8(chStyle));
}

KWE_API void KWE_CALL CheckItem(MenuHandle theMenu, SInt16 item, Boolean checked) {
  SetItemByte(theMenu, item, kMarkField, checked ? checkMark : noMark);
}

namespace {
void SetEnableBit(MenuHandle m, SInt16 item, bool on) {
  if (!Valid(m) || item < 0 || item >= 32) return;
  UInt32 flags = EnableFlags(m);
  flags = on ? flags | (1u << item) : flags & ~(1u << item);
  WriteLong(Bytes(m) + kEnableFlagsOffset, flags);
}
}  // namespace

KWE_API void KWE_CALL EnableItem(MenuHandle theMenu, SInt16 item) {
  SetEnableBit(theMenu, item, true);
}
KWE_API void KWE_CALL DisableItem(MenuHandle theMenu, SInt16 item) {
  SetEnableBit(theMenu, item, false);
}
