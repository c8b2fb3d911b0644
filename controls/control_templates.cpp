#include "controls/control_templates.h"

#include <cstring>

namespace kwe::controls {
namespace {

SInt16 Word(const UInt8* p) {
  SInt16 v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

constexpr size_t kMenuDataOffset = 14;  // after menuID .. enableFlags
constexpr size_t kItemTrailer = 4;      // icon, key, mark, style

}  // namespace

bool ReadControlTemplate(const UInt8* data, size_t size, ControlTemplate* out) {
  if (!data || !out || size < kControlTemplateFixedSize) return false;
  std::memcpy(&out->bounds, data, sizeof out->bounds);
  out->value = Word(data + 8);
  out->visible = data[10] != 0;
  out->max = Word(data + 12);
  out->min = Word(data + 14);
  out->procID = Word(data + 16);
  std::memcpy(&out->refCon, data + 18, sizeof out->refCon);
  size_t length = 0;
  if (size > kControlTemplateFixedSize) {
    length = data[kControlTemplateFixedSize];
    if (length > size - kControlTemplateFixedSize - 1)
      length = size - kControlTemplateFixedSize - 1;
  }
  out->title[0] = UInt8(length);
  if (length) std::memcpy(out->title + 1, data + kControlTemplateFixedSize + 1, length);
  return true;
}

std::vector<std::string> MenuItemTexts(const UInt8* data, size_t size) {
  std::vector<std::string> items;
  if (!data || size <= kMenuDataOffset) return items;
  size_t at = kMenuDataOffset;
  at += 1 + size_t(data[at]);  // the title
  while (at < size) {
    size_t length = data[at];
    if (length == 0 || at + 1 + length + kItemTrailer > size) break;
    items.emplace_back(reinterpret_cast<const char*>(data + at + 1), length);
    at += 1 + length + kItemTrailer;
  }
  return items;
}

bool PopUpMenuId(const UInt8* title, SInt16* id) {
  if (!title || !id) return false;
  const UInt8* p = title + 1;
  const UInt8* end = p + title[0];
  for (int commas = 0; commas < 2; ++p) {
    if (p == end) return false;
    if (*p == ',') ++commas;
  }
  while (p < end && *p == ' ') ++p;
  bool negative = p < end && *p == '-';
  if (negative) ++p;
  long value = 0;
  int digits = 0;
  for (; p < end && *p >= '0' && *p <= '9'; ++p, ++digits) {
    value = value * 10 + (*p - '0');
    if (value > 32768) return false;
  }
  while (p < end && *p == ' ') ++p;
  if (!digits || (p < end && *p != ',')) return false;
  if (negative) value = -value;
  if (value > 32767) return false;
  *id = SInt16(value);
  return true;
}

}  // namespace kwe::controls
