// Menus from resources: a 'MENU' becomes the menu itself, with its 'MDEF'
// looked up among the host's registered definition procedures; menus of
// resource names (desk accessories) and of the installed fonts.
#include <cstring>

#include "Memory.h"
#include "Resources.h"
#include "frame/low_memory.h"
#include "menus/menu_manager.h"
#include "quickdraw/text/font_list.h"

namespace kwe::menus {

constexpr ResType kMenuType = 0x4D454E55;         // 'MENU'
constexpr ResType kDefinitionType = 0x4D444546;   // 'MDEF'
constexpr ResType kFontType = 0x464F4E54;         // 'FONT'
constexpr ResType kOutlineFontType = 0x73666E74;  // 'sfnt'

namespace {

// A 'MENU' whose item list runs past the resource's end keeps its whole
// items and gets the 0 that ends the list.
void EndItemList(Handle h) {
  auto* bytes = reinterpret_cast<UInt8*>(*h);
  MenuShape shape = WalkMenu(bytes, size_t(GetHandleSize(h)));
  if (shape.terminated) return;
  SetHandleSize(h, Size(shape.end + 1));
  if (MemError() == noErr) reinterpret_cast<UInt8*>(*h)[shape.end] = 0;
}

// The definition field of a loaded 'MENU': 'MDEF' ID in the high half and
// 0xFFFF in the low half until it is made a handle.
void BindDefinition(MenuHandle m) {
  UInt32 field = ReadLong(Bytes(m) + kMenuProcOffset);
  if (!field || (field & 0xFFFF) != 0xFFFF) return;
  SInt16 id = SInt16(field >> 16);
  WriteLong(Bytes(m) + kMenuProcOffset, 0);
  if (id == 0) return;
  auto procedure =
      reinterpret_cast<MenuDefProcPtr>(KWE_CodeResource(3, kDefinitionType, id, nullptr));
  // No 68K code runs here: without a host procedure for it the menu is
  // drawn as a standard one.
  if (!procedure) return;
  Handle resource = GetResource(kDefinitionType, id);
  if (!resource) resource = NewHandleClear(6);
  if (!resource) return;
  SetDefinition(m, resource, procedure);
}

std::vector<std::string> ResourceNames(ResType type) {
  std::vector<std::string> names;
  UInt8 load = lowmem::At<UInt8>(lowmem::Slot::ResLoad);
  SetResLoad(false);
  for (SInt16 i = 1, n = CountResources(type); i <= n; ++i) {
    Handle h = GetIndResource(type, i);
    if (!h) continue;
    SInt16 id;
    ResType t;
    Str255 name{0};
    GetResInfo(h, &id, &t, name);
    // Desk accessories' names start with a 0 byte.
    size_t start = name[0] && name[1] == 0 ? 2 : 1;
    if (name[0] >= start)
      names.emplace_back(reinterpret_cast<char*>(name + start), name[0] + 1 - start);
  }
  SetResLoad(load != 0);
  return names;
}

// Each installed face's name, as its item's text is set: metacharacters in
// font names stay text.
std::vector<std::string> FontNames(bool trueTypeOnly) {
  quickdraw::EnsureFontData();
  std::vector<std::string> names;
  for (const quickdraw::InstalledFace& face : quickdraw::InstalledFaces()) {
    if (trueTypeOnly && !(face.fontType & TRUETYPE_FONTTYPE)) continue;
    names.emplace_back(face.faceName, strnlen(face.faceName, sizeof face.faceName));
  }
  return names;
}

}  // namespace

}  // namespace kwe::menus

using namespace kwe::menus;

KWE_API MenuHandle KWE_CALL GetMen(SInt16 resourceID) {
  Handle h = GetResource(kMenuType, resourceID);
  if (!h || !*h) return nullptr;
  auto m = reinterpret_cast<MenuHandle>(h);
  if (!Valid(m)) return nullptr;  // not even a whole title
  EndItemList(h);
  WriteWord(Bytes(m) + kMenuIdOffset, UInt16(resourceID));
  BindDefinition(m);
  CalcMenuSize(m);
  return m;
}

KWE_API void KWE_CALL AppendResMenu(MenuHandle theMenu, ResType theType) {
  InsertResMenu(theMenu, theType, 0x7FFF);
}

KWE_API void KWE_CALL InsertResMenu(MenuHandle theMenu, ResType theType, SInt16 afterItem) {
  if (!Valid(theMenu)) return;
  // Fonts are Windows' installed faces, not resources.
  bool fonts = theType == kFontType || theType == kOutlineFontType;
  InsertPlainItems(theMenu, fonts ? FontNames(theType == kOutlineFontType) : ResourceNames(theType),
                   afterItem);
}

KWE_API void KWE_CALL KWE_AddResFontMenu(MenuHandle menu, Boolean trueTypeOnly) {
  if (Valid(menu)) InsertPlainItems(menu, FontNames(trueTypeOnly), 0x7FFF);
}
