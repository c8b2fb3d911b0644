// Making and disposing of records, their text as a whole, and the settings
// an application changes on a record (alignment, procedures, auto-view).
#include <algorithm>
#include <cstring>

#include "Memory.h"
#include "frame/host_procedures.h"
#include "frame/low_memory.h"
#include "text/textedit/te_internal.h"

using namespace kwe::textedit;
using kwe::lowmem::At;
using kwe::lowmem::Slot;

namespace kwe::textedit {

bool EnsureLineRoom(TEHandle te, int count) {
  Size needed = kRecordBase + Size(2 * count);
  Size have = GetHandleSize(reinterpret_cast<Handle>(te));
  if (have >= needed) return true;
  Size grown = kRecordBase + Size(2 * ((count + kLineStep - 1) / kLineStep * kLineStep));
  SetHandleSize(reinterpret_cast<Handle>(te), grown);
  return MemError() == noErr;
}

}  // namespace kwe::textedit

namespace {

// The fields every record starts with; the port's text settings and metrics.
TEHandle MakeRecord(const Rect* destRect, const Rect* viewRect) {
  auto te = reinterpret_cast<TEHandle>(NewHandleClear(kRecordBase + 2 * kLineStep));
  if (!te) return nullptr;
  Handle text = NewHandle(0);
  if (!text) {
    DisposeHandle(reinterpret_cast<Handle>(te));
    return nullptr;
  }
  TERec* r = *te;
  GrafPtr port = nullptr;
  GetPort(&port);
  if (destRect) r->destRect = *destRect;
  if (viewRect) r->viewRect = *viewRect;
  r->hText = text;
  r->wordBreak = SimpleWordBreak;
  r->clikLoop = SimpleClikProc;
  r->inPort = port;
  if (port) {
    r->txFont = port->txFont;
    r->txFace = port->txFace;
    r->txMode = port->txMode;
    r->txSize = port->txSize;
    FontInfo fi{};
    GetFontInfo(&fi);
    r->lineHeight = SInt16(fi.ascent + fi.descent + fi.leading + 1);
    r->fontAscent = SInt16(fi.ascent + fi.leading);
  }
  r->selRect = {r->destRect.top, r->destRect.left, SInt16(r->destRect.top + r->lineHeight),
                r->destRect.left};
  return te;
}

}  // namespace

KWE_API void KWE_CALL TEInit(void) {
  Handle& scrap = At<Handle>(Slot::TEScrpHandle);
  if (scrap)
    SetHandleSize(scrap, 0);
  else
    scrap = NewHandle(0);
  At<SInt16>(Slot::TEScrpLength) = 0;
  Handle& styles = At<Handle>(Slot::TEStyleScrap);
  if (styles) DisposeHandle(styles);
  styles = nullptr;
  At<SInt16>(Slot::TEStyleScrapFlag) = 0;
}

KWE_API TEHandle KWE_CALL TENew(const Rect* destRect, const Rect* viewRect) {
  return MakeRecord(destRect, viewRect);
}

KWE_API TEHandle KWE_CALL TEStyleNew(const Rect* destRect, const Rect* viewRect) {
  TEHandle te = MakeRecord(destRect, viewRect);
  if (!te) return nullptr;
  TERec* r = *te;
  STElement first{};
  first.stCount = 1;
  first.stHeight = r->lineHeight;
  first.stAscent = r->fontAscent;
  first.stFont = r->txFont;
  first.stFace = r->txFace;
  first.stSize = r->txSize;
  if (r->inPort && r->inPort->portBits.rowBytes < 0) GetForeColor(&first.stColor);
  auto styles = reinterpret_cast<TEStyleHandle>(NewHandleClear(sizeof(TEStyleRec)));
  auto table = reinterpret_cast<STHandle>(NewHandle(sizeof(STElement)));
  auto heights = reinterpret_cast<LHHandle>(NewHandleClear(kLineStep * sizeof(LHElement)));
  auto null = reinterpret_cast<NullStHandle>(NewHandleClear(sizeof(NullStRec)));
  auto nullScrap = reinterpret_cast<StScrpHandle>(NewHandleClear(sizeof(StScrpRec)));
  if (!styles || !table || !heights || !null || !nullScrap) {
    for (Handle h : {reinterpret_cast<Handle>(styles), reinterpret_cast<Handle>(table),
                     reinterpret_cast<Handle>(heights), reinterpret_cast<Handle>(null),
                     reinterpret_cast<Handle>(nullScrap)})
      if (h) DisposeHandle(h);
    TEDispose(te);
    return nullptr;
  }
  **table = first;
  (*nullScrap)->scrpNStyles = 1;
  (*nullScrap)->scrpStyleTab[0] = ElementOf(first, 0);
  (*null)->nullScrap = nullScrap;
  TEStyleRec* s = *styles;
  s->nRuns = 1;
  s->nStyles = 1;
  s->styleTab = table;
  s->lhTab = heights;
  s->nullStyle = null;
  s->runs[0] = {1, 0};
  r = *te;
  r->styleHandle = reinterpret_cast<Handle>(styles);
  r->txSize = -1;
  r->lineHeight = -1;
  r->fontAscent = -1;
  return te;
}

KWE_API void KWE_CALL TEDispose(TEHandle hTE) {
  TERec* r = Rec(hTE);
  if (!r) return;
  if (IsStyled(r)) DisposeStyles(r->styleHandle);
  if (r->hText) DisposeHandle(r->hText);
  if (r->clikLoop != SimpleClikProc) kwe::ReleaseHostProcedure(ProcPtr(r->clikLoop));
  if (g_clicking == hTE) g_clicking = nullptr;
  ForgetBound(hTE);
  DisposeHandle(reinterpret_cast<Handle>(hTE));
}

KWE_API Handle KWE_CALL TEGetText(TEHandle hTE) {
  TERec* r = Rec(hTE);
  return r ? r->hText : nullptr;
}

KWE_API void KWE_CALL TESetText(const void* text, SInt32 length, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r) return;
  length = std::clamp<SInt32>(text ? length : 0, 0, kMaxText);
  auto bytes = static_cast<const UInt8*>(text);
  if (IsBound(r)) return BoundSetText(hTE, bytes, int(length));
  Replace(hTE, 0, r->teLength, bytes, int(length), nullptr, 0);
}

KWE_API void KWE_CALL TECalText(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r) return;
  if (IsBound(r)) return BoundRefresh(hTE, false);
  r->nLines = 0;
  r->lineStarts[0] = 0;
  Relayout(hTE, 0, 0, 0);
}

KWE_API void KWE_CALL TESetAlignment(SInt16 just, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r)) return;
  if (just == teJustLeft || just == teJustCenter || just == teJustRight) r->just = just;
}

KWE_API void KWE_CALL TEAutoView(Boolean fAuto, TEHandle hTE) {
  TERec* r = Rec(hTE);
  if (!r || IsBound(r)) return;
  r->active = SInt16(fAuto ? r->active | 2 : r->active & ~2);
}

KWE_API void KWE_CALL TESetWordBreak(WordBreakProcPtr wBrkProc, TEHandle hTE) {
  TERec* r = Rec(hTE);
  if (r && !IsBound(r)) r->wordBreak = wBrkProc ? wBrkProc : SimpleWordBreak;
}

KWE_API void KWE_CALL TESetClickLoop(TEClickLoopProcPtr clikProc, TEHandle hTE) {
  TERec* r = Rec(hTE);
  if (!r || IsBound(r)) return;
  if (r->clikLoop != SimpleClikProc) kwe::ReleaseHostProcedure(ProcPtr(r->clikLoop));
  r->clikLoop =
      clikProc ? reinterpret_cast<TEClickLoopProcPtr>(kwe::WrapHostProcedure(ProcPtr(clikProc)))
               : SimpleClikProc;
}

KWE_API void KWE_CALL KWE_MakePIClickLoop(TEClickLoopProcPtr* procPtr) {
  if (procPtr && *procPtr)
    *procPtr = reinterpret_cast<TEClickLoopProcPtr>(kwe::WrapHostProcedure(ProcPtr(*procPtr)));
}
