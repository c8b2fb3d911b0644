#include "resources/resource_file.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "Memory.h"
#include "frame/low_memory.h"
#include "memory/master_flags.h"

namespace kwe::resources {

namespace {

std::array<std::unique_ptr<ResourceFile>, kResourceFileSlots> g_files;
std::vector<int> g_chain;
int g_current = -1;

struct LastFoundEntry {
  ResType type = 0;
  SInt16 id = 0;
  Handle handle = nullptr;
} g_lastFound;

}  // namespace

ResourceFile* FileInSlot(int slot) {
  return slot >= 0 && slot < kResourceFileSlots ? g_files[size_t(slot)].get() : nullptr;
}

ResourceFile* FileOfRefNum(SInt16 refNum) {
  for (int slot : g_chain)
    if (g_files[size_t(slot)]->refNum == refNum) return g_files[size_t(slot)].get();
  return nullptr;
}

ResourceFile* FileOfPath(const std::string& path) {
  for (int slot : g_chain)
    if (lstrcmpiA(g_files[size_t(slot)]->path.c_str(), path.c_str()) == 0)
      return g_files[size_t(slot)].get();
  return nullptr;
}

ResourceFile* CurrentFile() { return FileInSlot(g_current); }

void MakeCurrent(ResourceFile* file) { g_current = file ? file->slot : -1; }

const std::vector<int>& Chain() { return g_chain; }

int TakeFreeSlot(int wished) {
  if (wished >= 0 && wished < kResourceFileSlots && !g_files[size_t(wished)]) return wished;
  for (int slot = 0; slot < kResourceFileSlots; ++slot)
    if (!g_files[size_t(slot)]) return slot;
  return -1;
}

void EnterFile(std::unique_ptr<ResourceFile> file, size_t chainPosition) {
  int slot = file->slot;
  g_files[size_t(slot)] = std::move(file);
  chainPosition = std::min(chainPosition, g_chain.size());
  g_chain.insert(g_chain.begin() + ptrdiff_t(chainPosition), slot);
  g_current = slot;
}

size_t ForgetFile(ResourceFile* file) {
  int slot = file->slot;
  auto at = std::find(g_chain.begin(), g_chain.end(), slot);
  size_t position = size_t(at - g_chain.begin());
  if (at != g_chain.end()) g_chain.erase(at);
  if (g_current == slot) g_current = position < g_chain.size() ? g_chain[position] : -1;
  g_files[size_t(slot)].reset();
  ForgetLastFound();
  return position;
}

void ForgetAllFiles() {
  for (auto& file : g_files) file.reset();
  g_chain.clear();
  g_current = -1;
  ForgetLastFound();
}

CurrentFileScope::CurrentFileScope(ResourceFile* file) : saved_(g_current) {
  if (file) g_current = file->slot;
}

CurrentFileScope::~CurrentFileScope() {
  if (FileInSlot(saved_)) g_current = saved_;
}

bool LocateHandle(Handle h, ResourceFile** file, ReferencePlace* place) {
  if (!memory::HasResourceBit(h)) return false;
  ResourceFile* home = FileInSlot(memory::HomeFileIndex(h));
  if (!home) return false;
  auto found = home->places.find(h);
  if (found == home->places.end()) return false;
  const Reference& ref = home->map.At(found->second);
  if (!ref.Live() || ref.handle != h) return false;
  *file = home;
  *place = found->second;
  return true;
}

bool LocateResource(Handle h, ResourceFile** file, ReferencePlace* place) {
  lowmem::ResErr() = noErr;
  if (LocateHandle(h, file, place)) return true;
  lowmem::ResErr() = resNotFound;
  return false;
}

ResourceFile* FileForCall(SInt16 refNum) {
  ResourceFile* file = FileOfRefNum(refNum);
  lowmem::ResErr() = file ? noErr : resFNotFound;
  return file;
}

void SetReferenceHandle(ResourceFile& file, ReferencePlace place, Handle h) {
  Reference& ref = file.map.At(place);
  if (ref.handle) file.places.erase(ref.handle);
  ref.handle = h;
  if (h) file.places[h] = place;
}

Handle NewResourceHandle(ResourceFile& file) {
  Handle h = NewHandle(0);
  if (!h) return nullptr;
  memory::SetResourceBit(h);
  memory::SetHomeFileIndex(h, file.slot);
  return h;
}

void RememberLastFound(ResType type, SInt16 id, Handle h) { g_lastFound = {type, id, h}; }

Handle LastFound(ResType type, SInt16 id) {
  if (!g_lastFound.handle || g_lastFound.type != type || g_lastFound.id != id) return nullptr;
  Ptr master = *g_lastFound.handle;
  if (!master || master == reinterpret_cast<Ptr>(uintptr_t(0xFFFF))) return nullptr;
  return g_lastFound.handle;
}

void ForgetLastFound() { g_lastFound = LastFoundEntry{}; }

}  // namespace kwe::resources
