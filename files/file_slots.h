// The open-file table: 64 slots whose numbers are the file reference numbers
// applications see (2 to 63; 0 and 1 are never handed out). A slot is free,
// open, or parked: closed for a moment (while a common dialog runs, while
// files are exchanged) and reopened at its place by the next read, write or
// seek. Open modes are OpenFile's bits, which the resource layer shares.
#pragma once
#include <windows.h>

#include <string>

#include "Files.h"

namespace kwe::files {

constexpr SInt16 kFirstSlot = 2;
constexpr SInt16 kSlotCount = 64;

enum : UInt16 {
  kOpenRead = 0x0000,       // OF_READ
  kOpenWrite = 0x0001,      // OF_WRITE
  kOpenReadWrite = 0x0002,  // OF_READWRITE
  kOpenAccessMask = 0x0003,
  kOpenShareMask = 0x0070,
  kOpenCreate = 0x1000,  // OF_CREATE
  kOpenReopen = 0x8000   // OF_REOPEN
};

// Session start frees every slot (closing what a previous session left
// open); session end closes every slot in use.
void ClearSlots();
void CloseSlots();

// KWE_FHOpen. err: tmfoErr with no free slot, opWrErr when another slot has
// the same file open for writing and this open writes too, else the
// translation of Windows' refusal.
SInt16 OpenSlot(const char* path, UInt16 mode, OSErr* err);
// KWE_FHCreate: creates or empties the file, then opens it.
SInt16 CreateSlot(const char* path, SInt16 attributes);
bool CloseSlot(SInt16 slot);

// Bytes moved, or -1. A write of 0 bytes cuts the file at the mark.
SInt32 ReadSlot(SInt16 slot, void* buffer, SInt32 count);
SInt32 WriteSlot(SInt16 slot, const void* buffer, SInt32 count);
// origin 0 start, 1 current, 2 end; the new mark or -1.
SInt32 SeekSlot(SInt16 slot, SInt32 offset, UInt16 origin);
bool FlushSlot(SInt16 slot);

bool ParkSlot(SInt16 slot);
// A parked file that cannot be reopened loses its slot.
bool ReopenSlot(SInt16 slot);

bool IsSlotInUse(SInt16 slot);
bool IsSlotOpenNow(SInt16 slot);  // in use and not parked
bool SlotMayWrite(SInt16 slot);   // opened with write access and not read-only on disk
const std::string* SlotPath(SInt16 slot);
void SetSlotPath(SInt16 slot, const std::string& path);
// The first slot in use whose file is the path's; 0 when none.
SInt16 SlotOfPath(const std::string& path);

HANDLE SlotHandleNow(SInt16 slot);  // null unless open now
SInt16 SlotOfHandle(HANDLE handle);
// DOS attributes of the slot's file; -1 (0xFFFF) when unknown.
SInt16 SlotAttributes(SInt16 slot);

// KWE_FHSetEOF0: wrPermErr for a read-only file; a file that cannot be
// emptied loses its slot (ioErr).
OSErr EmptySlotFile(SInt16 slot);
// For the resource layer: rfNumErr for a slot not in use, wrPermErr for a
// read-only file or a failed reopen (the file then stays open as it was).
OSErr ReopenSlotForWriting(SInt16 slot);
// The resource layer's wish for the slot of the next open, used once when free.
void PreferSlot(SInt16 slot);

// The full path Windows gives for a name, doubled backslashes reduced.
std::string FullDosPath(const char* path);

}  // namespace kwe::files
