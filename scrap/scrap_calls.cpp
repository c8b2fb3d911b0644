// The desk scrap calls over the Windows clipboard: the library opens and
// closes the clipboard and walks its formats; the host's clipboard procedure
// moves the data.
#include <windows.h>

#include "KWEScrap.h"
#include "frame/subsystems.h"
#include "quickdraw/ports/port_attr.h"
#include "scrap/scrap_state.h"

using namespace kwe::scrap;

KWE_API SInt32 KWE_CALL ZeroScrap(void) {
  // A clipboard held by another program stays as it is; the scrap counts as
  // changed all the same, as the application expects after ZeroScrap.
  if (OpenForScrap()) {
    EmptyClipboard();
    CloseAfterOwnWork(true);
  }
  CountChange();
  return noErr;
}

KWE_API SInt32 KWE_CALL PutScrap(SInt32 length, ResType theType, const void* source) {
  if (length < 0 || (length > 0 && !source)) return paramErr;
  if (!OpenForScrap()) return scrapBusyErr;
  SInt32 handled = CallProcedure(kweScrapPut, 0, ProcedureDC(), nullptr, theType,
                                 const_cast<void*>(source), &length);
  CloseAfterOwnWork(true);
  return handled ? SInt32(noErr) : SInt32(noScrapErr);
}

KWE_API SInt32 KWE_CALL GetScrap(Handle destination, ResType theType, SInt32* offset) {
  SInt32 passed = 0;
  if (!offset) offset = &passed;
  *offset = 0;
  SInt32 result = noTypeErr;
  if (!OpenForScrap()) return scrapBusyErr;
  HDC dc = ProcedureDC();
  for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
    if (CallProcedure(kweScrapGet, static_cast<UInt16>(format), dc, destination, theType, offset,
                      &result))
      break;
    ++*offset;
  }
  CloseAfterOwnWork(false);
  return result;
}

KWE_API ScrapStuff* KWE_CALL InfoScrap(void) { return &Info(); }

KWE_API SInt32 KWE_CALL LoadScrap(void) { return noErr; }
KWE_API SInt32 KWE_CALL LodeScrap(void) { return noErr; }

KWE_API SInt32 KWE_CALL UnloadScrap(void) {
  Info().scrapState = 0;
  return noErr;
}

KWE_API SInt32 KWE_CALL UnlodeScrap(void) { return UnloadScrap(); }

KWE_API void KWE_CALL KWE_DrawClipboard(void) {
  if (AlreadyCounted() || !OpenForScrap()) return;
  MarkCounted();
  CountChange();
  HDC dc = ProcedureDC();
  for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format))
    if (CallProcedure(kweScrapChanged, static_cast<UInt16>(format), dc, nullptr, 0, nullptr,
                      nullptr))
      break;
  CloseAfterOwnWork(false);
}

namespace kwe::scrap {

SInt16 ScrapCount() { return Info().scrapCount; }

void ApplicationSwitched(bool resume, bool convert) {
  // Only once QuickDraw has its screen: the procedure draws pictures there.
  if (!quickdraw::ScreenPort()) return;
  CallProcedure(resume ? kweScrapResume : kweScrapSuspend, convert ? 1 : 0, ProcedureDC(), nullptr,
                0, nullptr, nullptr);
}

}  // namespace kwe::scrap
