// Writing a resource file's map back. Changed resources are written first;
// then either the map goes behind the data, or - when blocks were removed or
// shrank, or the file holds dead bytes - the file is rebuilt packed. Nothing
// is written over the map the header on disk points to until the header
// itself is rewritten, and a rebuild writes a sibling file (last character
// of the name "2") that replaces the old one only once every byte of it is
// written: a failure on the way leaves the old file readable as it was.
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <map>

#include "Memory.h"
#include "Resources.h"
#include "files/file_slots.h"
#include "frame/low_memory.h"
#include "resources/resource_file_io.h"

namespace kwe::resources {

namespace {

constexpr Size kScratchSize = 0x7000;

// The header as it stands, with its first 16 bytes describing the new layout;
// the other 240 bytes are kept as found.
bool WriteHeaderAndMap(ResourceFile& file, SInt16 target, uint32_t targetBase, uint32_t dataLength,
                       const std::vector<uint8_t>& map) {
  uint8_t header[kHeaderSize];
  std::memcpy(header, file.header, kHeaderSize);
  ReadDosAt(file.refNum, file.base, header, kHeaderSize);
  WriteFileHeader(PackedHeader(dataLength, uint32_t(map.size())), header);
  // The map first: until the header points at it, the old map still rules.
  if (!WriteDosAt(target, targetBase + kHeaderSize + dataLength, map.data(), map.size()) ||
      !WriteDosAt(target, targetBase, header, kHeaderSize))
    return false;
  std::memcpy(file.header, header, kHeaderSize);
  return true;
}

bool NeedsRebuild(const ResourceFile& file, bool keepOpen) {
  if (!keepOpen && (file.holes || file.endOfData < file.endOfOldMap)) return true;
  // A live reference with no block (added, then its handle detached before
  // anything was written) needs the rebuild to get an empty block.
  for (const ResourceTypeEntry& type : file.map.Types())
    for (const Reference& ref : type.references)
      if ((ref.attributes & kPrivateMarks) || (ref.Live() && !ref.hasBlock)) return true;
  return false;
}

std::string SiblingPath(const std::string& path) {
  std::string sibling = path;
  sibling.back() = '2';
  return sibling;
}

// Copies the live blocks, packed from 256 on, into the sibling; fills
// newOffsets (old data offset -> new). Blocks shared by several references
// are copied once. References without a block of their own get an empty one,
// at *emptyBlock.
bool CopyLiveBlocks(ResourceFile& file, SInt16 target, Handle scratch,
                    std::map<uint32_t, uint32_t>* newOffsets, uint32_t* emptyBlock,
                    uint32_t* dataLength) {
  std::vector<uint32_t> offsets;
  bool blockless = false;
  for (const ResourceTypeEntry& type : file.map.Types())
    for (const Reference& ref : type.references) {
      if (ref.Live() && ref.hasBlock) offsets.push_back(ref.dataOffset);
      blockless = blockless || (ref.Live() && !ref.hasBlock);
    }
  std::sort(offsets.begin(), offsets.end());
  offsets.erase(std::unique(offsets.begin(), offsets.end()), offsets.end());

  uint32_t next = 0;
  for (uint32_t offset : offsets) {
    Reference probe;
    probe.dataOffset = offset;
    SInt32 length = StoredDataLength(file, probe);
    if (length < 0 || uint64_t(next) + 4 + uint64_t(length) > kLargestDataOffset) return false;
    uint8_t lengthBytes[4];
    if (!ReadDosAt(file.refNum, file.base + kHeaderSize + offset, lengthBytes, 4) ||
        !WriteDosAt(target, kHeaderSize + next, lengthBytes, 4))
      return false;
    for (SInt32 done = 0; done < length;) {
      SInt32 piece = std::min<SInt32>(length - done, kScratchSize);
      if (!ReadDosAt(file.refNum, file.base + kHeaderSize + offset + 4 + uint32_t(done), *scratch,
                     size_t(piece)) ||
          !WriteDosAt(target, kHeaderSize + next + 4 + uint32_t(done), *scratch, size_t(piece)))
        return false;
      done += piece;
    }
    (*newOffsets)[offset] = next;
    next += 4 + uint32_t(length);
  }
  if (blockless) {
    const uint8_t zero[4] = {};
    if (!WriteDosAt(target, kHeaderSize + next, zero, 4)) return false;
    *emptyBlock = next;
    next += 4;
  }
  *dataLength = next;
  return true;
}

// The handles of the live references in the order the map is written.
std::vector<Handle> LiveHandles(const ResourceFile& file) {
  std::vector<Handle> handles;
  for (const ResourceTypeEntry& type : file.map.Types())
    for (const Reference& ref : type.references)
      if (ref.Live()) handles.push_back(ref.handle);
  return handles;
}

bool Rebuild(ResourceFile& file, bool keepOpen, Handle scratch) {
  if (file.embedded) return false;
  std::string sibling = SiblingPath(file.path);
  SInt16 target = files::CreateSlot(sibling.c_str(), 0);
  if (target < 0) {
    lowmem::ResErr() = ioErr;
    return false;
  }
  std::map<uint32_t, uint32_t> newOffsets;
  uint32_t dataLength = 0;
  uint32_t emptyBlock = 0;
  bool written = false;
  std::vector<uint32_t> oldOffsets;
  try {
    if (CopyLiveBlocks(file, target, scratch, &newOffsets, &emptyBlock, &dataLength)) {
      for (ResourceTypeEntry& type : file.map.Types())
        for (Reference& ref : type.references) {
          oldOffsets.push_back(ref.dataOffset);
          if (ref.Live()) ref.dataOffset = ref.hasBlock ? newOffsets[ref.dataOffset] : emptyBlock;
        }
      std::vector<uint8_t> map;
      written = file.map.Build(dataLength, &map) &&
                WriteHeaderAndMap(file, target, 0, dataLength, map) && files::FlushSlot(target);
    }
  } catch (const std::bad_alloc&) {
    lowmem::ResErr() = memFullErr;
  }
  files::CloseSlot(target);
  auto restoreOffsets = [&] {
    size_t i = 0;
    for (ResourceTypeEntry& type : file.map.Types())
      for (Reference& ref : type.references)
        if (i < oldOffsets.size()) ref.dataOffset = oldOffsets[i++];
  };
  if (!written) {
    DeleteFileA(sibling.c_str());
    restoreOffsets();
    if (lowmem::ResErr() == noErr) lowmem::ResErr() = ioErr;
    return false;
  }

  ReopenWish wish;
  wish.slot = file.slot;
  wish.refNum = file.refNum;
  wish.handles = LiveHandles(file);
  files::CloseSlot(file.refNum);
  if (!MoveFileExA(sibling.c_str(), file.path.c_str(), MOVEFILE_REPLACE_EXISTING)) {
    // The old file is still whole: open it again as it was.
    DeleteFileA(sibling.c_str());
    restoreOffsets();
    files::PreferSlot(file.refNum);
    OSErr err = noErr;
    SInt16 again = files::OpenSlot(file.path.c_str(), files::kOpenReadWrite, &err);
    if (again >= 0) file.refNum = again;
    lowmem::ResErr() = ioErr;
    return false;
  }
  if (!keepOpen) {
    ReleaseAndClose(file, false);  // its DOS file is closed already
    return true;
  }
  std::string path = file.path;
  wish.chainPosition = ForgetFile(&file);
  return OpenResourcePath(path, false, &wish) >= 0;
}

}  // namespace

bool WriteBackMap(ResourceFile& file, bool keepOpen) {
  MakeCurrent(&file);
  if (!file.mapChanged && (keepOpen || (file.endOfOldMap <= file.endOfData && !file.holes)))
    return false;
  if (file.readOnly) {
    lowmem::ResErr() = mapReadErr;
    return false;
  }
  Handle scratch = NewHandleClear(kScratchSize);
  if (!scratch) {
    lowmem::ResErr() = memFullErr;
    return false;
  }
  auto& types = file.map.Types();
  for (uint32_t t = 0; t < types.size(); ++t)
    for (uint32_t r = 0; r < types[t].references.size(); ++r) {
      ReferencePlace place{t, r};
      const Reference& ref = file.map.At(place);
      if (!ref.handle || !ref.Live()) continue;
      OSErr err = WriteResourceData(file, place);
      if (err != noErr) {
        lowmem::ResErr() = err;
        DisposeHandle(scratch);
        return false;
      }
    }

  bool done = false;
  if (NeedsRebuild(file, keepOpen)) {
    done = Rebuild(file, keepOpen, scratch);
  } else {
    // The new map goes behind the data but never over the map on disk; what
    // lies between joins the data area as a hole until the file is rebuilt.
    std::vector<uint8_t> map;
    uint32_t mapAt = std::max(file.endOfData, MapOnDiskEnd(file));
    uint32_t dataLength = mapAt - kHeaderSize;
    done = file.map.Build(dataLength, &map) &&
           WriteHeaderAndMap(file, file.refNum, file.base, dataLength, map) &&
           files::FlushSlot(file.refNum);
    if (done && mapAt > file.endOfData) {
      file.holes = true;
      file.endOfData = mapAt;
    }
    if (!done) {
      if (lowmem::ResErr() == noErr) lowmem::ResErr() = ioErr;
    } else {
      file.mapChanged = false;
      file.layout = PackedHeader(dataLength, uint32_t(map.size()));
      SInt32 end = files::SeekSlot(file.refNum, 0, 2);
      file.endOfOldMap =
          end > 0 ? uint32_t(end) - file.base - uint32_t(map.size()) : file.endOfData;
      if (!keepOpen) ReleaseAndClose(file);
    }
  }
  DisposeHandle(scratch);
  return done;
}

}  // namespace kwe::resources
