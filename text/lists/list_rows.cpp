// Rows and columns: LAddRow, LDelRow, LAddColumn and LDelColumn rebuild the
// cell array and the cell data in the new shape, keeping every surviving
// cell's data and selection, and insert or delete the list box's items.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "Memory.h"
#include "memory/handle_storage.h"
#include "text/lists/list_manager.h"

namespace kwe::lists {
namespace {

// What a change of shape keeps: the new rows or columns [at, at + added)
// are new, and [at, at + removed) of the old ones are gone.
struct Change {
  bool columns = false;
  int at = 0, added = 0, removed = 0;
};

// The old index a cell of the new shape comes from, or -1 for a new cell.
int SourceOf(const Change& c, int oldRows, int h, int v) {
  int& along = c.columns ? h : v;
  if (along >= c.at && along < c.at + c.added) return -1;
  if (along >= c.at) along += c.removed - c.added;
  return h * oldRows + v;
}

bool Reshape(ListHandle l, const Change& c) {
  int oldRows = Rows(l), oldColumns = Columns(l);
  int rows = c.columns ? oldRows : oldRows + c.added - c.removed;
  int columns = c.columns ? oldColumns + c.added - c.removed : oldColumns;
  int count = rows * columns;
  std::vector<UInt16> entries(static_cast<size_t>(count));
  std::vector<char> data;
  data.reserve(size_t(GetHandleSize(reinterpret_cast<Handle>(Rec(l)->cells))) + 2 * count);
  for (int h = 0; h < columns; ++h) {
    for (int v = 0; v < rows; ++v) {
      int source = SourceOf(c, oldRows, h, v);
      SInt16 length = source < 0 ? 0 : DataLength(l, source);
      const char* bytes = source < 0 ? nullptr : *Rec(l)->cells + DataOffset(l, source);
      data.insert(data.end(), reinterpret_cast<char*>(&length),
                  reinterpret_cast<char*>(&length) + 2);
      if (length > 0) data.insert(data.end(), bytes, bytes + length);
      UInt16 selected = source < 0 ? 0 : UInt16(Entry(l, source) & kSelectedBit);
      entries[size_t(h * rows + v)] = UInt16(selected | UInt16(data.size() - size_t(length)));
    }
  }
  // Only growth can fail: the record grows first and shrinks last, so that a
  // failure leaves the list as it was (a longer record is never read).
  Handle cells = reinterpret_cast<Handle>(Rec(l)->cells);
  Handle record = reinterpret_cast<Handle>(l);
  if (Size(data.size()) > kMaxCellBytes) return false;
  bool grows = RecordBytes(count) > GetHandleSize(record);
  if (grows && memory::ResizeHandleData(record, RecordBytes(count)) != noErr) return false;
  if (memory::ResizeHandleData(cells, Size(data.size())) != noErr) return false;
  if (!data.empty()) std::memcpy(*cells, data.data(), data.size());
  if (count) std::memcpy(Rec(l)->cellArray, entries.data(), 2 * size_t(count));
  Rect& b = Rec(l)->dataBounds;
  (c.columns ? b.right : b.bottom) = SInt16((c.columns ? b.right : b.bottom) + c.added - c.removed);
  Rec(l)->maxIndex = SInt16(count - 1);
  if (!grows) memory::ResizeHandleData(record, RecordBytes(count));
  return true;
}

// The list box's items follow: one per row for a grid, one per cell else.
void ReshapeItems(ListHandle l, const Change& c, int oldRows) {
  HWND box = BoxOf(l);
  bool grid = ExtraOf(l).grid;
  if (grid && c.columns) {
    InvalidateRect(box, nullptr, TRUE);
    return;
  }
  LPARAM empty = ExtraOf(l).ownerDrawn ? 0 : reinterpret_cast<LPARAM>("");
  int rows = Rows(l);
  // Runs of items: one for a grid's rows and for columns, one per column
  // for the rows of a list box that holds every cell.
  int runs = grid || c.columns ? 1 : Columns(l);
  for (int k = runs - 1; k >= 0; --k) {
    int base = c.columns ? c.at * rows : (grid ? 0 : k * oldRows) + c.at;
    int per = c.columns ? rows : 1;
    for (int i = 0; i < c.removed * (c.columns ? oldRows : 1); ++i)
      SendMessageA(box, LB_DELETESTRING, WPARAM(base), 0);
    for (int i = 0; i < c.added * per; ++i) SendMessageA(box, LB_INSERTSTRING, WPARAM(base), empty);
  }
  UpdateVisible(l);
}

SInt16 Add(bool columns, SInt16 count, SInt16 at, ListHandle l) {
  if (!IsLive(l) || count <= 0) return 0;
  const Rect& b = Rec(l)->dataBounds;
  int first = columns ? b.left : b.top, end = columns ? b.right : b.bottom;
  int where = std::max(first, std::min<int>(at, end)) - first;
  Change c{columns, where, count, 0};
  int oldRows = Rows(l);
  if (!Reshape(l, c)) return 0;
  ReshapeItems(l, c, oldRows);
  return SInt16(first + where);
}

void Delete(bool columns, SInt16 count, SInt16 at, ListHandle l) {
  if (!IsLive(l)) return;
  const Rect& b = Rec(l)->dataBounds;
  int first = columns ? b.left : b.top, end = columns ? b.right : b.bottom;
  // A count of 0 deletes them all.
  if (count == 0) at = SInt16(first);
  int where = at - first;
  if (where < 0 || at >= end || count < 0) return;
  int n = count == 0 ? end - at : std::min<int>(count, end - at);
  Change c{columns, where, 0, n};
  int oldRows = Rows(l);
  if (Reshape(l, c)) ReshapeItems(l, c, oldRows);
}

}  // namespace
}  // namespace kwe::lists

using namespace kwe::lists;

KWE_API SInt16 KWE_CALL LAddRow(SInt16 count, SInt16 rowNum, ListHandle lHandle) {
  return Add(false, count, rowNum, lHandle);
}

KWE_API SInt16 KWE_CALL LAddColumn(SInt16 count, SInt16 colNum, ListHandle lHandle) {
  return Add(true, count, colNum, lHandle);
}

KWE_API void KWE_CALL LDelRow(SInt16 count, SInt16 rowNum, ListHandle lHandle) {
  Delete(false, count, rowNum, lHandle);
}

KWE_API void KWE_CALL LDelColumn(SInt16 count, SInt16 colNum, ListHandle lHandle) {
  Delete(true, count, colNum, lHandle);
}
