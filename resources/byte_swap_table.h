// KWE_ByteSwap's table of the Toolbox resource types the library knows.
// The byte work is here; what lies outside it (QuickDraw's cursor cache, the
// host's procedure and type list, the diagnostic channel) comes in through
// ByteSwapHost, so the table builds and is tested on its own.
#pragma once
#include <cstdint>

#include "MacTypes.h"

namespace kwe::byteswap {

struct ByteSwapHost {
  // 'CURS' and 'crsr': QuickDraw converts the hot spot and, when loading,
  // makes and caches the platform cursor. Null: the data stays as it is.
  void (*convertCursor)(bool isColour, void* data, SInt32 size, UInt32 direction);
  // Any type outside the table: true when the host's type list has it and
  // its procedure was called. Null: no host conversion.
  bool (*convertHostType)(UInt32 direction, ResType type, SInt16 id, SInt32 size, void* data);
  // "XXXX unknown byteswap type", "XXXX damaged byteswap data". Null: silent.
  void (*report)(const char* text);
};

enum class SwapOutcome { Converted, Damaged, UnknownType, Untouched };

// Converts size bytes at data by type. Touches no byte at or past
// data + size; nothing at all for size <= 0. Reports through host.report.
SwapOutcome SwapResource(UInt32 direction, ResType type, SInt16 id, SInt32 size, void* data,
                         const ByteSwapHost& host);

// Whether the table has a conversion of its own for type (else it goes to
// the host). For tests and the fuzz target.
bool TableKnows(ResType type);

// Every type of the table, index 0 to TableTypeCount() - 1.
int TableTypeCount();
ResType TableType(int index);

constexpr ResType TypeCode(const char (&s)[5]) {
  return (ResType(uint8_t(s[0])) << 24) | (ResType(uint8_t(s[1])) << 16) |
         (ResType(uint8_t(s[2])) << 8) | ResType(uint8_t(s[3]));
}

}  // namespace kwe::byteswap
