// KWE_ByteSwap in the session: QuickDraw's cursor conversion, the host's
// byte-swap procedure and type list, and the diagnostic channel.
#include <windows.h>

#include "KWEByteSwap.h"
#include "frame/diagnostics.h"
#include "frame/session.h"
#include "resources/byte_swap_table.h"
#include "resources/cursor_conversion_hook.h"

namespace kwe::byteswap {
namespace {

void ConvertCursor(bool isColour, void* data, SInt32 size, UInt32 direction) {
  quickdraw::ConvertCursorResource(true, isColour, data, size, direction != 0, true);
}

// The index is the type's position in the host's zero-ended list; it goes
// to the procedure as a 16-bit value widened to 32 bits.
bool ConvertHostType(UInt32 direction, ResType type, SInt16 id, SInt32 size, void* data) {
  const Session& session = TheSession();
  if (!session.byteSwapTypes || !session.byteSwapProcedure) return false;
  for (SInt16 index = 0; index < 0x7FFF && session.byteSwapTypes[index] != 0; ++index) {
    if (session.byteSwapTypes[index] != type) continue;
    if (session.flags & kweFlagExtendedByteSwap)
      reinterpret_cast<KWEByteSwapExtendedProcedure>(session.byteSwapProcedure)(direction, index,
                                                                                id, size, data);
    else
      reinterpret_cast<KWEByteSwapProcedure>(session.byteSwapProcedure)(direction, index, size,
                                                                        data);
    return true;
  }
  return false;
}

constexpr ByteSwapHost kSessionHost = {ConvertCursor, ConvertHostType, Report};

}  // namespace
}  // namespace kwe::byteswap

KWE_API void KWE_CALL KWE_ByteSwap(UInt32 direction, ResType type, SInt16 id, SInt32 size,
                                   void* data) {
  kwe::byteswap::SwapResource(direction, type, id, size, data, kwe::byteswap::kSessionHost);
}

KWE_API void KWE_CALL KWE_ConvMRtoWR(const Rect* mac, RECT* win) {
  if (!mac || !win) return;
  *win = RECT{mac->left, mac->top, mac->right, mac->bottom};
}

KWE_API void KWE_CALL KWE_ConvWRtoMR(const RECT* win, Rect* mac) {
  if (!win || !mac) return;
  *mac = Rect{SInt16(win->top), SInt16(win->left), SInt16(win->bottom), SInt16(win->right)};
}
