// One open resource file and the table of them: slots 0-62 (the slot is the
// home file index in the flags of each of the file's resource handles), the
// resource chain (newest first) and the current file.
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "MacTypes.h"
#include "resources/resource_map.h"

namespace kwe::resources {

constexpr int kResourceFileSlots = 63;
constexpr ResType kMenuType = 0x4D454E55;  // 'MENU'

struct ResourceFile {
  int slot = 0;
  std::string path;
  SInt16 refNum = 0;  // the open-file slot, which applications see as the file's number
  uint8_t header[kHeaderSize] = {};
  FileHeader layout;
  ResourceMap map;
  uint32_t base = 0;         // where the file starts inside its DOS file
  uint32_t endOfData = 0;    // where the next appended data block goes
  uint32_t endOfOldMap = 0;  // file length minus map length, as opened
  // Dead bytes inside the data area: a map that appended blocks stepped over
  // (see MapOnDiskEnd). Closing rebuilds the file packed.
  bool holes = false;
  bool mapChanged = false;
  bool readOnly = false;
  bool embedded = false;  // inside a file the application opened: never closed here
  std::unordered_map<Handle, ReferencePlace> places;  // each loaded handle's reference
};

// Where the map the header on disk points to ends. Until a new header is
// written, nothing is written below this point past the data: a write that
// fails half-way must leave that map whole.
inline uint32_t MapOnDiskEnd(const ResourceFile& file) {
  return file.layout.mapOffset + file.layout.mapLength;
}

// --- The table and the chain. ---
ResourceFile* FileInSlot(int slot);
ResourceFile* FileOfRefNum(SInt16 refNum);
ResourceFile* FileOfPath(const std::string& path);  // compared without case
ResourceFile* CurrentFile();
void MakeCurrent(ResourceFile* file);
// Slots of the open files, newest first.
const std::vector<int>& Chain();
// The lowest free slot, or the wished-for one when it is free; -1 when full.
int TakeFreeSlot(int wished);
// Enters a file at a chain position (0: head) and makes it current.
void EnterFile(std::unique_ptr<ResourceFile> file, size_t chainPosition);
// Takes the file out of the table and the chain; its chain position.
size_t ForgetFile(ResourceFile* file);
void ForgetAllFiles();

// Keeps the current file over a call that works on another (file, when
// given, is current meanwhile) and restores it if it is still open.
class CurrentFileScope {
 public:
  explicit CurrentFileScope(ResourceFile* file);
  ~CurrentFileScope();
  CurrentFileScope(const CurrentFileScope&) = delete;
  CurrentFileScope& operator=(const CurrentFileScope&) = delete;

 private:
  int saved_;
};

// --- Handles and references. ---
// A resource handle's file and reference, or false when it is not a live
// resource of an open file.
bool LocateHandle(Handle h, ResourceFile** file, ReferencePlace* place);
// LocateHandle for a call that takes a handle: ResErr is noErr, or
// resNotFound when the handle is not a live resource.
bool LocateResource(Handle h, ResourceFile** file, ReferencePlace* place);
// The open file a call names: ResErr is noErr, or resFNotFound (and null).
ResourceFile* FileForCall(SInt16 refNum);
// Ties a handle to a reference (or unties it with null).
void SetReferenceHandle(ResourceFile& file, ReferencePlace place, Handle h);
// A new empty handle with the resource bit and the file's home index.
Handle NewResourceHandle(ResourceFile& file);

// GetResource's one-entry memory of the last hit.
void RememberLastFound(ResType type, SInt16 id, Handle h);
Handle LastFound(ResType type, SInt16 id);
void ForgetLastFound();

}  // namespace kwe::resources
