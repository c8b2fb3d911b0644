// Cells: their numbering, their data in the cells handle, and the calls that
// read and write it. A cell's data is a 2-byte length and the bytes; the
// data lie in index order, so a cell that changes size moves the offsets of
// every later cell by the same amount.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "Memory.h"
#include "Packages.h"
#include "frame/host_procedures.h"
#include "memory/handle_storage.h"
#include "text/lists/list_manager.h"

namespace kwe::lists {

int IndexOf(ListHandle l, Cell c) {
  const Rect& b = Rec(l)->dataBounds;
  if (c.h < b.left || c.h >= b.right || c.v < b.top || c.v >= b.bottom) return -1;
  return (c.h - b.left) * Rows(l) + (c.v - b.top);
}

Cell CellAt(ListHandle l, int index) {
  int rows = Rows(l) > 0 ? Rows(l) : 1;
  const Rect& b = Rec(l)->dataBounds;
  return Cell{SInt16(b.top + index % rows), SInt16(b.left + index / rows)};
}

void SetSelectedBit(ListHandle l, int index, bool on) {
  UInt16& e = Entry(l, index);
  e = on ? UInt16(e | kSelectedBit) : UInt16(e & kOffsetBits);
}

UInt16 DataOffset(ListHandle l, int index) { return Entry(l, index) & kOffsetBits; }

SInt16 DataLength(ListHandle l, int index) {
  SInt16 length;
  std::memcpy(&length, *Rec(l)->cells + DataOffset(l, index) - 2, 2);
  return length;
}

bool ReplaceCellData(ListHandle l, int index, const void* data, int length, bool append) {
  Handle cells = reinterpret_cast<Handle>(Rec(l)->cells);
  int offset = DataOffset(l, index);
  int oldLength = DataLength(l, index);
  int newLength = append ? oldLength + length : length;
  int delta = newLength - oldLength;
  Size total = GetHandleSize(cells);
  if (newLength > kMaxCellBytes || total + delta > kMaxCellBytes) return false;
  // The source may lie in cells itself, which the resize and the move of
  // the tail can change: only then is it copied first (LSetCell fills long
  // lists one cell at a time).
  const char* source = static_cast<const char*>(data);
  auto at = reinterpret_cast<uintptr_t>(source), base0 = reinterpret_cast<uintptr_t>(*cells);
  std::vector<char> copy;
  if (source && at + uintptr_t(length) > base0 && at < base0 + uintptr_t(total)) {
    copy.assign(source, source + length);
    source = copy.data();
  }
  if (delta > 0 && memory::ResizeHandleData(cells, total + delta) != noErr) return false;
  char* base = *cells;
  int tail = offset + oldLength;
  if (delta != 0) std::memmove(base + tail + delta, base + tail, size_t(total - tail));
  if (delta < 0) memory::ResizeHandleData(cells, total + delta);
  base = *cells;
  char* to = base + offset + (append ? oldLength : 0);
  if (source)
    std::memcpy(to, source, size_t(length));
  else
    std::memset(to, 0, size_t(length));
  SInt16 stored = SInt16(newLength);
  std::memcpy(base + offset - 2, &stored, 2);
  if (delta != 0) {
    UInt16* entries = reinterpret_cast<UInt16*>(Rec(l)->cellArray);
    for (int i = index + 1, n = CellCount(l); i < n; ++i) entries[i] = UInt16(entries[i] + delta);
  }
  return true;
}

namespace {

void ChangeCell(const void* dataPtr, SInt16 dataLen, Cell theCell, ListHandle l, bool append) {
  if (!IsLive(l) || !dataPtr || dataLen < 0) return;
  int index = IndexOf(l, theCell);
  if (index < 0 || !ReplaceCellData(l, index, dataPtr, dataLen, append)) return;
  RefreshItem(l, index);
}

}  // namespace
}  // namespace kwe::lists

using namespace kwe::lists;

KWE_API void KWE_CALL LSetCell(const void* dataPtr, SInt16 dataLen, Cell theCell,
                               ListHandle lHandle) {
  ChangeCell(dataPtr, dataLen, theCell, lHandle, false);
}

KWE_API void KWE_CALL LAddToCell(const void* dataPtr, SInt16 dataLen, Cell theCell,
                                 ListHandle lHandle) {
  ChangeCell(dataPtr, dataLen, theCell, lHandle, true);
}

KWE_API void KWE_CALL LClrCell(Cell theCell, ListHandle lHandle) {
  ChangeCell("", 0, theCell, lHandle, false);
}

KWE_API void KWE_CALL LGetCell(void* dataPtr, SInt16* dataLen, Cell theCell, ListHandle lHandle) {
  if (!dataLen) return;
  int index = IsLive(lHandle) ? IndexOf(lHandle, theCell) : -1;
  if (index < 0 || *dataLen <= 0 || !dataPtr) {
    *dataLen = 0;
    return;
  }
  SInt16 n = std::min(*dataLen, DataLength(lHandle, index));
  std::memcpy(dataPtr, *Rec(lHandle)->cells + DataOffset(lHandle, index), size_t(n));
  *dataLen = n;
}

KWE_API void KWE_CALL LGetCellDataLocation(SInt16* offset, SInt16* len, Cell theCell,
                                           ListHandle lHandle) {
  int index = IsLive(lHandle) ? IndexOf(lHandle, theCell) : -1;
  if (offset) *offset = index < 0 ? 0 : SInt16(DataOffset(lHandle, index));
  if (len) *len = index < 0 ? 0 : DataLength(lHandle, index);
}

KWE_API Boolean KWE_CALL LNextCell(Boolean hNext, Boolean vNext, Cell* theCell,
                                   ListHandle lHandle) {
  if (!theCell || !IsLive(lHandle)) return false;
  const Rect& b = Rec(lHandle)->dataBounds;
  if (hNext && theCell->h + 1 < b.right) {
    ++theCell->h;
    return true;
  }
  if (vNext && theCell->v + 1 < b.bottom) {
    ++theCell->v;
    theCell->h = b.left;
    return true;
  }
  return false;
}

KWE_API Boolean KWE_CALL LSearch(const void* dataPtr, SInt16 dataLen, ListSearchProcPtr searchProc,
                                 Cell* theCell, ListHandle lHandle) {
  if (!theCell || !IsLive(lHandle)) return false;
  int start = IndexOf(lHandle, *theCell);
  if (start < 0) return false;
  ListSearchProcPtr match = searchProc;
  if (searchProc)
    match = reinterpret_cast<ListSearchProcPtr>(
        kwe::WrapHostProcedure(reinterpret_cast<ProcPtr>(searchProc)));
  bool found = false;
  for (int i = start, n = CellCount(lHandle); i < n && !found; ++i) {
    Ptr data = *Rec(lHandle)->cells + DataOffset(lHandle, i);
    SInt16 length = DataLength(lHandle, i);
    Ptr key = static_cast<Ptr>(const_cast<void*>(dataPtr));
    SInt16 answer =
        match ? match(data, key, length, dataLen) : IUMagIDString(data, key, length, dataLen);
    if (answer == 0) {
      *theCell = CellAt(lHandle, i);
      found = true;
    }
  }
  if (searchProc) kwe::ReleaseHostProcedure(reinterpret_cast<ProcPtr>(match));
  return found;
}
