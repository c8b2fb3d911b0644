#include "demo_clipboard.h"

#include <cstring>

#include "KWECharacters.h"
#include "Memory.h"

namespace {

constexpr ResType kText = 0x54455854;  // 'TEXT'

// The library's character tables, one byte for one (the typographic
// expansions would change the length), read once per transfer so that the
// translation switch (system value 24) is followed.
void MacToAnsiTable(UInt8 table[256]) {
  UInt8 all[256];
  for (int c = 0; c < 256; ++c) all[c] = static_cast<UInt8>(c);
  KWE_MacToAnsiBuf(all, table, 256, kweKeepTypographic);
}

void AnsiToMacTable(UInt8 table[256]) {
  UInt8 all[256];
  for (int c = 0; c < 256; ++c) all[c] = static_cast<UInt8>(c);
  table[0] = 0;  // the conversion stops at a NUL
  KWE_AnsiToMacBuf(all + 1, table + 1, 255);
}

// 'TEXT' onto the clipboard: every CR becomes CR LF.
bool PutText(const UInt8* source, SInt32 length) {
  UInt8 table[256];
  MacToAnsiTable(table);
  size_t size = static_cast<size_t>(length);
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size * 2 + 1);
  if (!memory) return false;
  UInt8* out = static_cast<UInt8*>(GlobalLock(memory));
  size_t n = 0;
  for (size_t i = 0; i < size; ++i) {
    out[n++] = table[source[i]];
    if (source[i] == '\r') out[n++] = '\n';
  }
  out[n++] = 0;
  GlobalUnlock(memory);
  // Give back what the line ends did not use.
  if (HGLOBAL smaller = GlobalReAlloc(memory, n, GMEM_MOVEABLE)) memory = smaller;
  if (SetClipboardData(CF_TEXT, memory)) return true;
  GlobalFree(memory);
  return false;
}

// CF_TEXT into destination as 'TEXT': CR LF and a lone LF become CR. The
// length, or a Memory Manager error.
SInt32 GetText(Handle destination) {
  HANDLE data = GetClipboardData(CF_TEXT);
  const UInt8* text = data ? static_cast<const UInt8*>(GlobalLock(data)) : nullptr;
  if (!text) return noTypeErr;
  size_t size = strnlen(reinterpret_cast<const char*>(text), GlobalSize(data));
  size_t length = 0;
  for (size_t i = 0; i < size; ++i) length += !(text[i] == '\n' && i > 0 && text[i - 1] == '\r');
  SInt32 result = static_cast<SInt32>(length);
  if (destination) {
    SetHandleSize(destination, result);
    if (MemError() != noErr) {
      result = MemError();
    } else {
      UInt8 table[256];
      AnsiToMacTable(table);
      UInt8* out = reinterpret_cast<UInt8*>(*destination);
      size_t n = 0;
      for (size_t i = 0; i < size; ++i) {
        if (text[i] == '\n') {
          if (i == 0 || text[i - 1] != '\r') out[n++] = '\r';
          continue;
        }
        out[n++] = table[text[i]];
      }
    }
  }
  GlobalUnlock(data);
  return result;
}

}  // namespace

SInt32 __stdcall DemoClipboardProc(SInt16 operation, UInt16 format, HDC, Handle destination,
                                   ResType type, void* p, void* q) {
  switch (operation) {
    case kweScrapGet:
      if (type != kText || format != CF_TEXT) return 0;
      *static_cast<SInt32*>(q) = GetText(destination);
      return 1;
    case kweScrapPut:
      if (type != kText) return 0;
      return PutText(static_cast<const UInt8*>(p), *static_cast<SInt32*>(q));
    case kweScrapChanged:
      // Text is converted when it is asked for; nothing to prepare.
      return format == CF_TEXT;
    default: return 1;  // suspend and resume: the clipboard is always Windows'
  }
}

void ListenToClipboard(HWND mainWindow) { AddClipboardFormatListener(mainWindow); }
