// The session's clipboard procedure: the desk scrap's 'TEXT' is the Windows
// clipboard's CF_TEXT, Macintosh Roman against Windows ANSI and the
// Macintosh's CR line ends against CR LF.
#include <cstring>
#include <string>

#include "KWECharacters.h"
#include "KWEScrap.h"
#include "Memory.h"
#include "host/shell.h"

namespace kwe::host {
namespace {

constexpr ResType kText = 0x54455854;  // 'TEXT'

// The library's character tables, one byte for one (the typographic
// expansions would change the length), read at each transfer so that the
// translation switch is followed.
struct Tables {
  UInt8 toAnsi[256];
  UInt8 toMac[256];
  Tables() {
    UInt8 all[256];
    for (int c = 0; c < 256; ++c) all[c] = static_cast<UInt8>(c);
    KWE_MacToAnsiBuf(all, toAnsi, 256, kweKeepTypographic);
    toMac[0] = 0;  // the conversion stops at a NUL
    KWE_AnsiToMacBuf(all + 1, toMac + 1, 255);
  }
};

bool PutText(const UInt8* source, SInt32 length) {
  Tables tables;
  std::string text;
  text.reserve(static_cast<size_t>(length) + 16);
  for (SInt32 i = 0; i < length; ++i) {
    if (source[i] == '\r')
      text += '\r', text += '\n';
    else
      text += static_cast<char>(tables.toAnsi[source[i]]);
  }
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
  if (!memory) return false;
  memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
  GlobalUnlock(memory);
  if (SetClipboardData(CF_TEXT, memory)) return true;
  GlobalFree(memory);
  return false;
}

// CR LF and a lone LF become CR. The length, or a Memory Manager error.
SInt32 GetText(Handle destination) {
  HANDLE data = GetClipboardData(CF_TEXT);
  const char* ansi = data ? static_cast<const char*>(GlobalLock(data)) : nullptr;
  if (!ansi) return noTypeErr;
  Tables tables;
  std::string text;
  for (size_t i = 0, size = strnlen(ansi, GlobalSize(data)); i < size; ++i) {
    UInt8 c = static_cast<UInt8>(ansi[i]);
    if (c == '\n' && i > 0 && ansi[i - 1] == '\r') continue;
    text += static_cast<char>(c == '\n' ? '\r' : tables.toMac[c]);
  }
  GlobalUnlock(data);
  SInt32 result = static_cast<SInt32>(text.size());
  if (destination) {
    SetHandleSize(destination, result);
    if (MemError() != noErr) return MemError();
    memcpy(*destination, text.data(), text.size());
  }
  return result;
}

}  // namespace

SInt32 __stdcall ClipboardProc(SInt16 operation, UInt16 format, HDC, Handle destination,
                               ResType type, void* p, void* q) {
  switch (operation) {
    case kweScrapGet:
      if (type != kText || format != CF_TEXT) return 0;
      *static_cast<SInt32*>(q) = GetText(destination);
      return 1;
    case kweScrapPut:
      if (type != kText) return 0;
      return PutText(static_cast<const UInt8*>(p), *static_cast<SInt32*>(q));
    case kweScrapChanged: return format == CF_TEXT;  // converted when asked for
    default: return 1;  // suspend and resume: the clipboard is always Windows'
  }
}

}  // namespace kwe::host
