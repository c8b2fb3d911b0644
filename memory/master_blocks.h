// The master blocks: the platform blocks that hold every handle's master
// record. They form a ring searched from the current block; a record, once
// handed out, never moves, so a Handle stays valid until it is disposed.
#pragma once
#include "MacTypes.h"
#include "memory/master_record.h"

namespace kwe::memory {

// A free record, marked in use (flags 1, no storage, size 0); a new master
// block is added when every block is full. Null when none can be made.
MasterRecord* TakeFreeRecord();

// The master block of which r is one of the records, searched from the
// current block round the ring; null when r is no master record.
MasterBlock* BlockHolding(const MasterRecord* r);

// Marks r free and makes its block current. An r that lies in no master
// block is left alone and, under heap checking, reported.
void ReleaseRecord(MasterRecord* r);

// The same, for a record whose block is known.
void ReleaseRecordIn(MasterBlock* b, MasterRecord* r);

// One more master block of the zone's moreMast records (at most 4,678) at
// the front of the list, made current.
bool AddMasterBlock();

// Walking the ring: the current block (null before the first handle), and
// the block after b, the first block after the last one.
MasterBlock* CurrentMasterBlock();
MasterBlock* NextInRing(const MasterBlock* b);

// Session end: every master block is unlocked and freed.
void ReleaseAllMasterBlocks();

}  // namespace kwe::memory
