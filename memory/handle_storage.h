// The data behind a master record: a locked platform block, a small block,
// or none. Every handle with data is held locked (lock count 2), so its
// master pointer is always valid; only a resize moves the data.
#pragma once
#include "MacTypes.h"
#include "memory/master_record.h"

namespace kwe::memory {

// Lock: the first lock of a platform block locks it and sets the master
// pointer. Unlock: the last unlock unlocks it and leaves kNoBlock.
void LockHandle(MasterRecord* r);
void UnlockHandle(MasterRecord* r);

// Data of size bytes (> 0) for a record that has none, locked: a small
// block when the session asks for them, else a platform block.
bool GiveStorage(MasterRecord* r, Size size);

// A new handle of size bytes (zeroed), or null: the allocation of
// NewHandle without touching MemErr.
Handle MakeHandle(Size size);

// Frees the data (a resource handle first leaves its resource map); master
// pointer 0, size 0. The purgeable and C bits survive.
void EmptyHandleData(MasterRecord* r);

// The resize of SetHandleSize, for newSize >= 0: noErr or memFullErr; on
// failure the data and size are unchanged.
OSErr ResizeHandleData(Handle h, Size newSize);

}  // namespace kwe::memory
