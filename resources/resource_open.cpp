// Opening a resource file: the slot, the read-only retry, files embedded in
// another open file, and the checks every header and map must pass before
// anything of the file becomes visible.
#include <windows.h>

#include <new>

#include "Resources.h"
#include "files/file_slots.h"
#include "frame/low_memory.h"
#include "frame/system_values.h"
#include "resources/big_endian.h"
#include "resources/resource_file_io.h"

namespace kwe::resources {

namespace {

constexpr int16_t kSysValueEmbeddingFile = 8;  // an open file's number, -1 when unused
constexpr int16_t kSysValueSystemFileBase = 10;
constexpr int16_t kSysValueApplicationFileBase = 11;
constexpr SInt32 kEmbeddedFileLength = 512;

// The header and the map, checked. noErr, ioErr (short header) or mapReadErr.
OSErr ReadHeaderAndMap(ResourceFile& file, SInt32 fileLength) {
  if (fileLength < SInt32(kShortestFile)) return mapReadErr;
  if (!ReadDosAt(file.refNum, file.base, file.header, kHeaderSize)) return ioErr;
  FileHeader header = ReadFileHeader(file.header);
  uint64_t length = uint64_t(fileLength);
  if (file.embedded) {
    // The enclosing file says nothing of where this one ends but its map;
    // still, the map must lie inside the DOS file.
    length = uint64_t(header.mapOffset) + header.mapLength;
    SInt32 realEnd = files::SeekSlot(file.refNum, 0, 2);
    if (realEnd < 0 || uint64_t(file.base) + length > uint64_t(realEnd)) return mapReadErr;
  }
  if (!HeaderIsSound(header, length)) return mapReadErr;
  try {
    std::vector<uint8_t> map(header.mapLength);
    if (!ReadDosAt(file.refNum, file.base + header.mapOffset, map.data(), header.mapLength))
      return mapReadErr;
    if (!file.map.Parse(map.data(), map.size())) return mapReadErr;
  } catch (const std::bad_alloc&) {
    return mapReadErr;
  }
  file.layout = header;
  file.endOfData = header.mapOffset;
  file.endOfOldMap = uint32_t(length - header.mapLength);
  return noErr;
}

// Preload references get their handles at once; with ResLoad on, their data.
void Preload(ResourceFile& file) {
  auto& types = file.map.Types();
  for (uint32_t t = 0; t < types.size(); ++t) {
    for (uint32_t r = 0; r < types[t].references.size(); ++r) {
      ReferencePlace place{t, r};
      Reference& ref = file.map.At(place);
      if (!(ref.attributes & kAttrPreload) || ref.handle) continue;
      Handle h = NewResourceHandle(file);
      if (!h) continue;
      SetReferenceHandle(file, place, h);
      if (lowmem::At<UInt8>(lowmem::Slot::ResLoad)) ReadResourceData(file, place, true);
    }
  }
}

// The loaded handles of a file rebuilt while open find their references
// again: the rebuilt map holds exactly the live references, in order.
void CarryHandles(ResourceFile& file, const std::vector<Handle>& handles) {
  size_t next = 0;
  auto& types = file.map.Types();
  for (uint32_t t = 0; t < types.size(); ++t)
    for (uint32_t r = 0; r < types[t].references.size() && next < handles.size(); ++r)
      if (Handle h = handles[next++]) SetReferenceHandle(file, ReferencePlace{t, r}, h);
}

// A file already open: made current, and reopened for writing when asked.
SInt16 ReuseOpenFile(ResourceFile* open, bool readOnly) {
  MakeCurrent(open);
  if (open->readOnly && !readOnly && !open->embedded) {
    OSErr err = files::ReopenSlotForWriting(open->refNum);
    lowmem::ResErr() = err;
    if (err == noErr) open->readOnly = false;
  }
  return open->refNum;
}

}  // namespace

SInt16 OpenResourcePath(const std::string& rawPath, bool readOnly, const ReopenWish* wish) {
  lowmem::ResErr() = noErr;
  int slot = TakeFreeSlot(wish ? wish->slot : -1);
  if (slot < 0) {
    lowmem::ResErr() = tmfoErr;
    return -1;
  }
  std::string path = files::FullDosPath(rawPath.c_str());
  if (ResourceFile* open = FileOfPath(path)) return ReuseOpenFile(open, readOnly);

  auto file = std::make_unique<ResourceFile>();
  file->slot = slot;
  file->path = path;
  SInt32 fileLength = 0;
  SInt16 enclosing = SInt16(ReadSystemValue(kSysValueEmbeddingFile));
  if (enclosing != -1 && slot <= 1 && files::IsSlotInUse(enclosing)) {
    file->refNum = enclosing;
    file->base = uint32_t(
        ReadSystemValue(slot == 0 ? kSysValueSystemFileBase : kSysValueApplicationFileBase));
    file->embedded = true;
    readOnly = true;
    fileLength = kEmbeddedFileLength;
  } else {
    if (wish) files::PreferSlot(wish->refNum);
    OSErr err = noErr;
    SInt16 refNum =
        files::OpenSlot(path.c_str(), readOnly ? files::kOpenRead : files::kOpenReadWrite, &err);
    if (refNum < 0 && !readOnly && err == permErr) {
      refNum = files::OpenSlot(path.c_str(), files::kOpenRead, &err);
      readOnly = true;
    }
    if (refNum < 0) {
      lowmem::ResErr() = err;
      return -1;
    }
    file->refNum = refNum;
    fileLength = files::SeekSlot(refNum, 0, 2);
  }
  file->readOnly = readOnly;

  OSErr err = ReadHeaderAndMap(*file, fileLength);
  if (err != noErr) {
    if (!file->embedded) files::CloseSlot(file->refNum);
    lowmem::ResErr() = err;
    return -1;
  }
  ResourceFile* entered = file.get();
  EnterFile(std::move(file), wish ? wish->chainPosition : 0);
  if (wish) CarryHandles(*entered, wish->handles);
  Preload(*entered);
  return entered->refNum;
}

void CreateResourcePath(const std::string& rawPath) {
  std::string path = files::FullDosPath(rawPath.c_str());
  // A file that is already there is never emptied: only a file of length 0
  // (or none at all) gets the empty map.
  if (FileOfPath(path)) return;
  OSErr err = noErr;
  SInt16 refNum = files::OpenSlot(path.c_str(), files::kOpenReadWrite, &err);
  if (refNum < 0) {
    if (GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES) return;
    refNum = files::CreateSlot(path.c_str(), 0);
    if (refNum < 0) return;
  }
  if (files::SeekSlot(refNum, 0, 2) == 0) {
    uint8_t empty[kShortestFile] = {};
    FileHeader header = PackedHeader(0, kShortestMap);
    WriteFileHeader(header, empty);
    uint8_t* map = empty + kHeaderSize;
    WriteFileHeader(header, map);
    WriteBig16(map + 24, kMapHeaderSize);
    WriteBig16(map + 26, kShortestMap);
    WriteBig16(map + 28, 0xFFFF);
    files::SeekSlot(refNum, 0, 0);
    files::WriteSlot(refNum, empty, sizeof empty);
  }
  files::CloseSlot(refNum);
}

}  // namespace kwe::resources
