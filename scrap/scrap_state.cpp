#include "scrap/scrap_state.h"

#include "frame/low_memory.h"
#include "frame/session.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::scrap {
namespace {

bool g_closingOwn = false;
// Clipboard sequence numbers: after the library's last own change, and of
// the last change counted. 0 where Windows keeps none.
DWORD g_ownSequence = 0;
DWORD g_countedSequence = 0;

}  // namespace

ScrapStuff& Info() { return lowmem::At<ScrapStuff>(lowmem::Slot::ScrapInfo); }

void CountChange() {
  ScrapStuff& info = Info();
  info.scrapSize = 0;
  info.scrapHandle = nullptr;
  info.scrapCount = static_cast<SInt16>(info.scrapCount + 1);
  info.scrapState = 0;
}

SInt32 CallProcedure(SInt16 operation, UInt16 format, HDC dc, Handle destination, ResType type,
                     void* p, void* q) {
  auto procedure = reinterpret_cast<KWEClipboardProc>(TheSession().clipboardProcedure);
  return procedure ? procedure(operation, format, dc, destination, type, p, q) : 0;
}

HDC ProcedureDC() { return quickdraw::CurrentDC(); }

bool OpenForScrap() { return OpenClipboard(TheSession().mainWindow) != 0; }

void CloseAfterOwnWork(bool changed) {
  g_closingOwn = true;
  CloseClipboard();
  g_closingOwn = false;
  // Only a change: reading must not hide another program's change whose
  // notification is still on its way.
  if (changed) g_ownSequence = GetClipboardSequenceNumber();
}

bool AlreadyCounted() {
  if (g_closingOwn) return true;
  DWORD sequence = GetClipboardSequenceNumber();
  return sequence != 0 && (sequence == g_ownSequence || sequence == g_countedSequence);
}

void MarkCounted() { g_countedSequence = GetClipboardSequenceNumber(); }

}  // namespace kwe::scrap
