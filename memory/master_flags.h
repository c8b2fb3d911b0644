// The bits of a handle's flags word that other managers own: the resource
// bit and home file index (the Resource Manager), the C bit (DrawPicture).
// Applications reach them only through HGetState / HSetState / HSetCBit.
#pragma once
#include "MacTypes.h"
#include "memory/master_record.h"

namespace kwe::memory {

inline void SetResourceBit(Handle h) {
  if (h) RecordOf(h)->flags |= kResourceBit;
}

inline void ClearResourceBit(Handle h) {
  if (h) RecordOf(h)->flags &= static_cast<UInt16>(~kResourceBit);
}

inline bool HasResourceBit(Handle h) { return h && (RecordOf(h)->flags & kResourceBit); }

// index: the resource file's slot (0-63) in the Resource Manager's table.
inline void SetHomeFileIndex(Handle h, int index) {
  if (!h) return;
  MasterRecord* r = RecordOf(h);
  r->flags = static_cast<UInt16>((r->flags & ~kHomeFileMask) |
                                 ((index << kHomeFileShift) & kHomeFileMask));
}

inline int HomeFileIndex(Handle h) {
  return h ? (RecordOf(h)->flags & kHomeFileMask) >> kHomeFileShift : 0;
}

inline void ClearCBit(Handle h) {
  if (h) RecordOf(h)->flags &= static_cast<UInt16>(~kCBit);
}

inline bool HasCBit(Handle h) { return h && (RecordOf(h)->flags & kCBit); }

// EmptyHandle (and so DisposeHandle and purging) hands a resource handle to
// this procedure before freeing its data, so that it leaves its resource map.
// The Resource Manager installs its DetachResource here when it starts.
using ResourceDetachProcedure = void (*)(Handle h);
void SetResourceDetachProcedure(ResourceDetachProcedure procedure);

}  // namespace kwe::memory
