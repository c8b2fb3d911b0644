// The clipboard procedure's 'TEXT': the desk scrap's text is the Windows
// clipboard's CF_TEXT, Macintosh Roman against Windows ANSI and the
// Macintosh's CR line ends against CR LF. Most text is plain ASCII, which
// both character sets share, so runs of it are copied eight bytes at a time.
#include <cstdint>
#include <cstring>

#include "KWECharacters.h"
#include "Memory.h"
#include "host/shell_clipboard.h"

namespace kwe::host {
namespace {

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

// Text is mostly plain ASCII, which both character sets share: how many
// bytes from p on are below 0x80 and not the line-end byte, eight at a time.
size_t PlainLength(const UInt8* p, size_t size, UInt8 lineEnd) {
  constexpr uint64_t kOnes = 0x0101010101010101ull, kHighs = 0x8080808080808080ull;
  size_t i = 0;
  for (; i + 8 <= size; i += 8) {
    uint64_t word;
    std::memcpy(&word, p + i, 8);
    uint64_t x = word ^ (kOnes * lineEnd);  // a zero byte where the line end is
    if ((word & kHighs) || ((x - kOnes) & ~x & kHighs)) break;
  }
  while (i < size && p[i] < 0x80 && p[i] != lineEnd) ++i;
  return i;
}

// The position of the next byte c from i on, or size.
size_t NextByte(const UInt8* p, size_t size, size_t i, UInt8 c) {
  constexpr uint64_t kOnes = 0x0101010101010101ull, kHighs = 0x8080808080808080ull;
  for (; i + 8 <= size; i += 8) {
    uint64_t word;
    std::memcpy(&word, p + i, 8);
    uint64_t x = word ^ (kOnes * c);
    if ((x - kOnes) & ~x & kHighs) break;
  }
  while (i < size && p[i] != c) ++i;
  return i;
}

bool IdentityBelow128(const UInt8 table[256]) {
  for (int c = 0; c < 128; ++c)
    if (table[c] != c) return false;
  return true;
}

// Copies size bytes through table, calling special for each line-end byte;
// returns the bytes written.
template <typename Special>
size_t Convert(const UInt8* source, size_t size, UInt8* out, const UInt8 table[256], UInt8 lineEnd,
               Special special) {
  bool fast = IdentityBelow128(table);
  size_t n = 0;
  for (size_t i = 0; i < size;) {
    size_t plain = fast ? PlainLength(source + i, size - i, lineEnd) : 0;
    std::memcpy(out + n, source + i, plain);
    n += plain;
    i += plain;
    if (i == size) break;
    UInt8 c = source[i++];
    if (c == lineEnd)
      n += special(out + n, i - 1);
    else
      out[n++] = table[c];
  }
  return n;
}

}  // namespace

// 'TEXT' onto the clipboard: every CR becomes CR LF.
bool PutText(const UInt8* source, SInt32 length) {
  UInt8 table[256];
  MacToAnsiTable(table);
  size_t size = static_cast<size_t>(length);
  size_t lines = 0;
  for (size_t i = NextByte(source, size, 0, '\r'); i < size;
       i = NextByte(source, size, i + 1, '\r'))
    ++lines;
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size + lines + 1);
  if (!memory) return false;
  UInt8* out = static_cast<UInt8*>(GlobalLock(memory));
  size_t n = Convert(source, size, out, table, '\r', [](UInt8* at, size_t) {
    at[0] = '\r';
    at[1] = '\n';
    return size_t(2);
  });
  out[n] = 0;
  GlobalUnlock(memory);
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
  // A LF after a CR goes (the CR is there already); a lone one becomes a CR.
  // Counted first, so that an application's handle of the right size is
  // neither grown nor shrunk.
  size_t pairs = 0;
  for (size_t i = NextByte(text, size, 0, '\n'); i < size; i = NextByte(text, size, i + 1, '\n'))
    pairs += i > 0 && text[i - 1] == '\r';
  SInt32 result = static_cast<SInt32>(size - pairs);
  if (destination) {
    SetHandleSize(destination, result);
    if (MemError() != noErr) {
      result = MemError();
    } else {
      UInt8 table[256];
      AnsiToMacTable(table);
      Convert(text, size, reinterpret_cast<UInt8*>(*destination), table, '\n',
              [text](UInt8* at, size_t i) {
                if (i > 0 && text[i - 1] == '\r') return size_t(0);
                at[0] = '\r';
                return size_t(1);
              });
    }
  }
  GlobalUnlock(data);
  return result;
}

}  // namespace kwe::host
