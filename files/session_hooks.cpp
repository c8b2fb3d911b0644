// Where the session's start-up and shut-down, the Segment Loader and the
// Process Manager reach the file layer.
#include <windows.h>

#include <cstring>

#include "Files.h"
#include "StandardFile.h"
#include "files/call_support.h"
#include "files/catalog_entries.h"
#include "files/file_slots.h"
#include "files/finder_info.h"
#include "files/volume_table.h"
#include "files/working_directories.h"
#include "frame/low_memory.h"
#include "frame/subsystems.h"

namespace kwe::files {

// A session starts with every slot free, no working directory and no
// Standard File choice remembered.
void ClearFileSlots() {
  ClearSlots();
  EndCatalogEnumeration();
  ForgetWorkingDirectories();
  ForgetChosenFile();
}

void CloseFileSlots() {
  CloseSlots();
  EndCatalogEnumeration();
}

void StartVolumeTable() { BuildVolumeTable(); }

// The volume of the directory CurDirStore names, or of the process's
// current directory when it names none (or a root).
void SetStartupVolumeGlobals() {
  EnsureVolumeTable();
  const WorkingDirectory* wd = DirectoryByID(lowmem::At<SInt32>(lowmem::Slot::CurDirStore));
  SInt16 volume = VolumeRefNumOfPath(wd ? wd->path : ProcessCurrentDirectory());
  lowmem::At<SInt16>(lowmem::Slot::SFSaveDisk) = static_cast<SInt16>(-volume);
  lowmem::At<SInt16>(lowmem::Slot::CurrentVolume) = volume;
}

bool DocumentFromDosPath(const char* path, SInt16* vRefNum, OSType* fileType,
                         unsigned char name[64]) {
  if (!path) return false;
  DWORD attributes = QuietAttributes(path);
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY))
    return false;
  SFReply reply;
  KWE_DosFSpec2MacSFReply(false, false, -1, false, false, path, &reply);
  if (!reply.good || reply.vRefNum == kNoVolume) return false;
  *vRefNum = reply.vRefNum;
  *fileType = reply.fType;
  std::memcpy(name, reply.fName, 64);
  return true;
}

OSErr DosPathFromSpec(const FSSpec* spec, char path[MAX_PATH]) {
  if (!spec) return paramErr;
  return KWE_HFSpec(spec->parID, spec->vRefNum, spec->name, path);
}

}  // namespace kwe::files
