#include "scrap/scrap_state.h"

#include "frame/low_memory.h"
#include "frame/session.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::scrap {
namespace {

constexpr int kOpenAttempts = 20;
constexpr DWORD kOpenRetryMs = 5;

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

// Another program that reads the clipboard holds it open for a moment;
// Windows programs try again rather than lose a Cut or a Copy. Meanwhile
// the messages that program sends (WM_DESTROYCLIPBOARD while it empties
// the clipboard this session owns) are answered, or it would wait for us.
bool OpenForScrap() {
  for (int attempt = 0; attempt < kOpenAttempts; ++attempt) {
    if (OpenClipboard(TheSession().mainWindow)) return true;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, kOpenRetryMs, QS_SENDMESSAGE);
    MSG sent;
    PeekMessageA(&sent, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
  }
  return false;
}

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
