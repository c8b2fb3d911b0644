// Reading and writing resource files through the open-file table: opening
// and validating, loading one resource's data, writing it, writing the map
// back (appending, or rebuilding the file packed), and creating empty files.
// Every failure leaves ResErr set and the file on disk as it was.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "MacTypes.h"
#include "resources/resource_file.h"

namespace kwe::resources {

// What a reopening after a rebuild keeps: the slot, the reference number,
// the place in the chain, and the loaded handles of the live references in
// map order.
struct ReopenWish {
  int slot = -1;
  SInt16 refNum = 0;
  size_t chainPosition = 0;
  std::vector<Handle> handles;
};

// Reads or writes count bytes at a position of the DOS file behind refNum
// (base offsets already added); false on a failed seek or a short transfer.
bool ReadDosAt(SInt16 refNum, uint64_t position, void* buffer, size_t count);
bool WriteDosAt(SInt16 refNum, uint64_t position, const void* bytes, size_t count);

// The file's reference number, or -1 with ResErr set. A path already open
// gives that file, made current.
SInt16 OpenResourcePath(const std::string& path, bool readOnly, const ReopenWish* wish = nullptr);
// CreateResFile's work: an empty 286-byte file, unless one with data is there.
void CreateResourcePath(const std::string& path);

// Reads the data of a reference whose handle is empty, in native order.
// mapReadErr for a block that runs past the file, memFullErr when the handle
// cannot grow, ioErr when the read fails; with dropOnFailure the handle is
// then disposed of and the reference left without one.
OSErr ReadResourceData(ResourceFile& file, ReferencePlace place, bool dropOnFailure);
// WriteResource's work for a changed reference (a new block behind the
// data, the old one left for packing); noErr when unchanged.
OSErr WriteResourceData(ResourceFile& file, ReferencePlace place);
// The length stored in front of the reference's data block; -1 when unreadable.
SInt32 StoredDataLength(ResourceFile& file, const Reference& ref);

// Writes the map back; true when it was written. When closing, a written
// file is also released and closed.
bool WriteBackMap(ResourceFile& file, bool keepOpen);
// ReleaseResource's work on one reference; writeChanged writes it first
// when it was changed.
void ReleaseReference(ResourceFile& file, ReferencePlace place, bool writeChanged);
// Releases every resource of the file without writing anything, closes it
// (unless its DOS file is closed already) and forgets it.
void ReleaseAndClose(ResourceFile& file, bool closeDosFile = true);
// CloseResFile's work: changed resources and the map written back, then the
// file released and closed. A write-back that fails leaves the file on disk
// as it was and the changes are dropped.
void CloseResourceFile(ResourceFile& file);

}  // namespace kwe::resources
