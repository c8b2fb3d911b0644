// The TextEdit scrap (the TEScrpHandle and TEScrpLength globals) and the
// style scrap beside it. The scrap follows the desk scrap's 'TEXT': a copy
// writes both, a paste reads the desk scrap first, so text another program
// put on the clipboard is what gets pasted.
#include <algorithm>
#include <cstring>

#include "Memory.h"
#include "Scrap.h"
#include "frame/low_memory.h"
#include "text/textedit/te_internal.h"

using namespace kwe::textedit;
using kwe::lowmem::At;
using kwe::lowmem::Slot;

namespace {

constexpr ResType kText = 0x54455854;  // 'TEXT'

Handle& ScrapHandle() { return At<Handle>(Slot::TEScrpHandle); }

// The scrap holding length bytes of text; false leaves it as it was.
bool FillScrap(const UInt8* text, int length) {
  Handle& scrap = ScrapHandle();
  if (!scrap) scrap = NewHandle(0);
  if (!scrap) return false;
  SetHandleSize(scrap, length);
  if (MemError() != noErr) return false;
  if (length > 0) std::memcpy(*scrap, text, size_t(length));
  At<SInt16>(Slot::TEScrpLength) = SInt16(length);
  return true;
}

void KeepStyles(const std::vector<ScrpSTElement>* styles) {
  Handle& kept = At<Handle>(Slot::TEStyleScrap);
  if (kept) DisposeHandle(kept);
  kept = nullptr;
  At<SInt16>(Slot::TEStyleScrapFlag) = 0;
  if (!styles) return;
  std::vector<UInt8> bytes = WriteStyleScrap(*styles);
  kept = NewHandle(Size(bytes.size()));
  if (!kept) return;
  std::memcpy(*kept, bytes.data(), bytes.size());
  At<SInt16>(Slot::TEStyleScrapFlag) = 1;
}

// The scrap's text in place of the selection, the selection a caret after it.
void PasteScrap(TEHandle te, const std::vector<ScrpSTElement>* styles) {
  TEFromScrap();
  Handle scrap = ScrapHandle();
  int length =
      std::clamp<int>(At<SInt16>(Slot::TEScrpLength), 0, scrap ? int(GetHandleSize(scrap)) : 0);
  const auto* text = scrap && *scrap ? reinterpret_cast<const UInt8*>(*scrap) : nullptr;
  TERec* r = *te;
  if (IsBound(r)) return BoundReplace(te, text, length);
  Replace(te, r->selStart, r->selEnd, text, length, styles, kDraw);
}

}  // namespace

KWE_API OSErr KWE_CALL TEFromScrap(void) {
  SInt32 offset = 0;
  Handle incoming = NewHandle(0);
  if (!incoming) return noErr;
  SInt32 length = GetScrap(incoming, kText, &offset);
  if (length >= 0)
    FillScrap(reinterpret_cast<const UInt8*>(*incoming), int(std::min<SInt32>(length, kMaxText)));
  DisposeHandle(incoming);
  return noErr;
}

KWE_API OSErr KWE_CALL TEToScrap(void) {
  Handle scrap = ScrapHandle();
  ZeroScrap();
  if (scrap) PutScrap(At<SInt16>(Slot::TEScrpLength), kText, *scrap);
  return noErr;
}

KWE_API Handle KWE_CALL TEScrapHandle(void) { return ScrapHandle(); }

KWE_API SInt32 KWE_CALL TEGetScrapLength(void) { return At<SInt16>(Slot::TEScrpLength); }

KWE_API void KWE_CALL TESetScrapLength(SInt32 length) {
  Handle scrap = ScrapHandle();
  if (!scrap || length < 0 || length > 0x7FFF) return;
  SetHandleSize(scrap, length);
  if (MemError() == noErr) At<SInt16>(Slot::TEScrpLength) = SInt16(length);
}

KWE_API void KWE_CALL TECopy(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r) return;
  if (IsBound(r)) BoundRefresh(hTE, false);
  r = *hTE;
  int start = r->selStart, length = r->selEnd - r->selStart;
  if (length < 0 || !FillScrap(TextOf(r) + start, length)) return;
  ZeroScrap();
  PutScrap(length, kText, *ScrapHandle());
  if (IsStyled(r) && !IsBound(r)) {
    std::vector<ScrpSTElement> styles = StylesOfRange(r, start, start + length);
    KeepStyles(&styles);
  } else {
    KeepStyles(nullptr);
  }
}

KWE_API void KWE_CALL TECut(TEHandle hTE) {
  if (!Usable(hTE)) return;
  TECopy(hTE);
  TEDelete(hTE);
}

KWE_API void KWE_CALL TEPaste(TEHandle hTE) {
  if (Usable(hTE)) PasteScrap(hTE, nullptr);
}

KWE_API void KWE_CALL TEStylePaste(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r) return;
  Handle kept = At<Handle>(Slot::TEStyleScrap);
  std::vector<ScrpSTElement> styles;
  bool withStyles = IsStyled(r) && At<SInt16>(Slot::TEStyleScrapFlag) && kept && *kept &&
                    ReadStyleScrap(*kept, size_t(GetHandleSize(kept)), &styles) && !styles.empty();
  PasteScrap(hTE, withStyles ? &styles : nullptr);
}
