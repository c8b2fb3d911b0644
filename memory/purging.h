// Purging: purgeable handles are emptied, in master-record order, when an
// allocation needs room; the grow-zone procedure is the application's last
// word before an allocation fails.
#pragma once
#include "MacTypes.h"

namespace kwe::memory {

// Empties purgeable handles, from the current master block round the ring,
// until their sizes (small blocks not counted) reach needed. False after a
// full ring without enough; what was emptied stays empty.
bool PurgePass(Size needed);

// A handle in the middle of a resize must not be purged out from under it.
class PinnedHandle {
 public:
  explicit PinnedHandle(Handle h);
  ~PinnedHandle();
  PinnedHandle(const PinnedHandle&) = delete;
  PinnedHandle& operator=(const PinnedHandle&) = delete;

 private:
  bool pinned_;
};

// growZone(needed) when a procedure is set and not already running;
// false otherwise.
bool AskGrowZone(Size needed, SInt32* freed);

// Session end: the stored procedure goes back through the free procedure.
void ReleaseGrowZone();

}  // namespace kwe::memory
