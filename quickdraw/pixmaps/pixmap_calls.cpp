// NewPixMap, DisposePixMap and CopyPixMap over the library's pixel map
// record.
#include <cstring>

#include "Memory.h"
#include "QuickdrawColour.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

// Gives back the Windows objects and the packed DIB a library pixel map
// holds; the shared DCs are never deleted.
void ReleasePixels(LibraryPixMap& lib) {
  if (lib.bitmapDC && lib.replaced) SelectObject(lib.bitmapDC, lib.replaced);
  if (lib.ddb) DeleteObject(lib.ddb);
  if (lib.ownDC && lib.ownDC != SharedMemoryDC()) DeleteDC(lib.ownDC);
  if (lib.dib) DisposeHandle(lib.dib);
  if (lib.bitmapDC && lib.bitmapDC != SharedMemoryDC()) DeleteDC(lib.bitmapDC);
  lib.bitmapDC = lib.ownDC = nullptr;
  lib.ddb = lib.replaced = nullptr;
  lib.dib = nullptr;
  lib.dibBits = nullptr;
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API PixMapHandle KWE_CALL NewPixMap(void) {
  HDC dc = CurrentDC();
  bool screen = !dc;
  if (screen) dc = GetDC(nullptr);
  PixMapHandle pm = MakePixMap(dc);
  if (screen) ReleaseDC(nullptr, dc);
  SetQDError(pm ? noErr : memFullErr);
  return pm;
}

KWE_API void KWE_CALL DisposePixMap(PixMapHandle pm) {
  if (!pm || !*pm) return;
  if (IsLibraryPixMap(pm)) ReleasePixels(*reinterpret_cast<LibraryPixMap*>(*pm));
  DisposePixMapRecord(pm);
}

// The published fields, and the colours into dst's own table handle.
KWE_API void KWE_CALL CopyPixMap(PixMapHandle srcPM, PixMapHandle dstPM) {
  if (!srcPM || !*srcPM || !dstPM || !*dstPM || srcPM == dstPM) return;
  CTabHandle dstTable = (*dstPM)->pmTable;
  CTabHandle srcTable = (*srcPM)->pmTable;
  **dstPM = **srcPM;
  (*dstPM)->pmTable = dstTable;
  if (!srcTable || !*srcTable) return;
  Size size = GetHandleSize(reinterpret_cast<Handle>(srcTable));
  if (!dstTable) {
    Handle copy = reinterpret_cast<Handle>(srcTable);
    if (HandToHand(&copy) == noErr) (*dstPM)->pmTable = reinterpret_cast<CTabHandle>(copy);
    return;
  }
  SetHandleSize(reinterpret_cast<Handle>(dstTable), size);
  if (GetHandleSize(reinterpret_cast<Handle>(dstTable)) != size) {
    SetQDError(memFullErr);
    return;
  }
  std::memcpy(*dstTable, *srcTable, static_cast<size_t>(size));
}
