// The outside bytes the Control Manager reads: a 'CNTL' template, the items
// of the 'MENU' a pop-up lists, and the menu ID in a pop-up's title. Each
// reads nothing past the size it is given, whatever the counts inside say.
// Resource data arrives here already in native byte order.
#pragma once
#include <cstddef>
#include <string>
#include <vector>

#include "MacTypes.h"

namespace kwe::controls {

// 'CNTL': boundsRect, value, visible (then a filler byte), max, min, procID,
// refCon, title.
struct ControlTemplate {
  Rect bounds{};
  SInt16 value = 0;
  bool visible = false;
  SInt16 max = 0, min = 0, procID = 0;
  SInt32 refCon = 0;
  Str255 title{};  // cut to the bytes the resource holds
};
constexpr size_t kControlTemplateFixedSize = 22;
// False when size cannot hold the fixed fields.
bool ReadControlTemplate(const UInt8* data, size_t size, ControlTemplate* out);

// The item texts of a 'MENU' (menuID, width, height, menuProc, enableFlags,
// then the title and the items as Pascal strings each followed by four
// bytes, ended by a zero length byte). A list cut short gives the items
// that are whole.
std::vector<std::string> MenuItemTexts(const UInt8* data, size_t size);

// A pop-up's title is "label,width,menuID": the 'MENU' ID is the third
// comma-separated field, a decimal number. False with fewer fields or
// when the field is not a number of 16 bits.
bool PopUpMenuId(const UInt8* title, SInt16* id);

}  // namespace kwe::controls
