// 'MENU' and 'MBAR' resources in Macintosh byte order, as a resource editor
// writes them, for the managers that read menus (the Menu Manager, pop-up
// controls). Callers link kwe_resource_builder.
#pragma once
#include <string>
#include <vector>

#include "MacTypes.h"
#include "resource_builder/resource_image.h"

namespace kwe_test {

inline void PutWord(resource_builder::Bytes& b, int v) {
  b.push_back(UInt8(v >> 8));
  b.push_back(UInt8(v));
}

inline void PutPString(resource_builder::Bytes& b, const std::string& s) {
  b.push_back(UInt8(s.size()));
  b.insert(b.end(), s.begin(), s.end());
}

// One item of a 'MENU' resource.
struct MenuItemData {
  std::string text;
  UInt8 icon = 0, key = 0, mark = 0, style = 0;
};

// mdef is the 'MDEF' ID.
inline resource_builder::Resource MenuResource(SInt16 id, const std::string& title,
                                               const std::vector<MenuItemData>& items,
                                               UInt32 enable = 0xFFFFFFFFu, SInt16 mdef = 0) {
  resource_builder::Bytes b;
  for (int word : {int(id), 0, 0, int(mdef), 0, int(enable >> 16), int(enable & 0xFFFF)})
    PutWord(b, word);
  PutPString(b, title);
  for (const MenuItemData& item : items) {
    PutPString(b, item.text);
    b.insert(b.end(), {item.icon, item.key, item.mark, item.style});
  }
  b.push_back(0);
  return resource_builder::MakeResource("MENU", id, b);
}

inline resource_builder::Resource MenuBarResource(SInt16 id, const std::vector<SInt16>& menuIDs) {
  resource_builder::Bytes b;
  PutWord(b, int(menuIDs.size()));
  for (SInt16 m : menuIDs) PutWord(b, m);
  return resource_builder::MakeResource("MBAR", id, b);
}

}  // namespace kwe_test
