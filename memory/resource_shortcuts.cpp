// Shortcuts that fetch strings, icons, patterns, pictures and cursors by
// resource ID, and pick single elements out of 'STR#' and 'PAT#' lists.
#include <cstring>

#include "Memory.h"
#include "TextUtils.h"
#include "ToolUtils.h"
#include "memory/indexed_lists.h"
#include "memory/resource_shortcut_hook.h"

namespace {

constexpr ResType Code(const char (&s)[5]) {
  return (ResType(UInt8(s[0])) << 24) | (ResType(UInt8(s[1])) << 16) | (ResType(UInt8(s[2])) << 8) |
         ResType(UInt8(s[3]));
}

constexpr SInt16 kLastBuiltInCursor = 4;

Handle Fetch(const char (&type)[5], SInt16 id) {
  return kwe::resources::GetResourceForShortcut(Code(type), id);
}

// The bytes of a resource handle; null (never dereferenced) when empty.
const unsigned char* BytesOf(Handle h, Size size) {
  return size > 0 ? reinterpret_cast<const unsigned char*>(*h) : nullptr;
}

}  // namespace

KWE_API StringHandle KWE_CALL GetString(SInt16 stringID) {
  return reinterpret_cast<StringHandle>(Fetch("STR ", stringID));
}

KWE_API void KWE_CALL GetIndString(Str255 theString, SInt16 strListID, SInt16 index) {
  if (!theString) return;
  theString[0] = 0;
  Handle list = Fetch("STR#", strListID);
  if (!list) return;
  Size size = GetHandleSize(list);
  kwe::utilities::CopyIndexedString(BytesOf(list, size), static_cast<size_t>(size), index,
                                    theString);
  kwe::resources::ReleaseResourceForShortcut(list);
}

KWE_API Handle KWE_CALL GetIcon(SInt16 iconID) { return Fetch("ICON", iconID); }

KWE_API PatHandle KWE_CALL GetPattern(SInt16 patID) {
  return reinterpret_cast<PatHandle>(Fetch("PAT ", patID));
}

KWE_API void KWE_CALL GetIndPattern(Pattern* thePattern, SInt16 patternListID, SInt16 index) {
  if (!thePattern) return;
  Handle list = Fetch("PAT#", patternListID);
  Size size = list ? GetHandleSize(list) : 0;
  auto found = kwe::utilities::CopyIndexedPattern(BytesOf(list, size), static_cast<size_t>(size),
                                                  index, thePattern);
  // A missing list clears the pattern like an index below 1; an index past
  // the list's end leaves the caller's pattern alone.
  if (!list || found == kwe::utilities::PatternLookup::kBeforeFirst)
    std::memset(thePattern, 0, sizeof *thePattern);
}

KWE_API PicHandle KWE_CALL GetPicture(SInt16 picID) {
  return reinterpret_cast<PicHandle>(Fetch("PICT", picID));
}

KWE_API CursHandle KWE_CALL GetCurso(SInt16 cursorID) {
  if (cursorID >= 0 && cursorID <= kLastBuiltInCursor)
    return kwe::quickdraw::BuiltInCursorHandle(cursorID);
  return reinterpret_cast<CursHandle>(Fetch("CURS", cursorID));
}
