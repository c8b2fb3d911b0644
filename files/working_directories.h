// Directory IDs and working directories: every directory the application
// names gets one record for the session, whose number (0x8000 | n) serves as
// a working-directory reference number and whose ID serves as a directory ID.
// 2 is the root directory of a volume, 0 no directory.
#pragma once
#include <string>

#include "Files.h"

namespace kwe::files {

constexpr SInt32 kRootDirID = 2;

struct WorkingDirectory {
  SInt16 number;  // 0x8000 | n
  SInt32 dirID;
  std::string path;  // full path ending in a backslash, drive letter upper-cased
};

// A session starts with none.
void ForgetWorkingDirectories();

// The directory ID of a directory path (made absolute in the current
// directory when it is not), its record made when new: kRootDirID for a
// volume root, 0 when the path cannot have one (no volume prefix, longer than
// 255 characters). vRefNum: the path's volume (kNoVolume when unknown);
// wdRefNum: the record's number, 0 for a root, kNoVolume for none.
SInt32 DirectoryIDForPath(const std::string& path, SInt16* vRefNum, SInt16* wdRefNum);

const WorkingDirectory* DirectoryByID(SInt32 dirID);
const WorkingDirectory* DirectoryByNumber(SInt16 wdRefNum);

// The process's current directory, ending in a backslash ("" when Windows
// gives none the naming model can use).
std::string ProcessCurrentDirectory();

// KWE_CurDirvRefNum: CurDirStore becomes the directory's ID; the answer is
// its working-directory number, or the volume reference number for a root.
SInt16 MakeCurrentDirectory(const std::string& path);

// A directory as the Toolbox names it: a directory ID, and for the root (ID
// 2) the volume reference number or working-directory number that says
// which volume (0: the current directory's).
struct DirectoryRef {
  SInt32 dirID = 0;
  SInt16 vRefNum = 0;
};

// vRefNum alone: -1 to -27 a volume's root, 0 the current directory, else a
// working directory. False when it names none.
bool ResolveVRefNum(SInt16 vRefNum, DirectoryRef* ref);

// The directory's path, ending in a backslash. fnfErr for an unknown
// directory ID, nsvErr for a root whose volume is unknown.
OSErr DirectoryPath(const DirectoryRef& ref, std::string* path);

// The volume reference number of a directory; kNoVolume when unknown.
SInt16 VolumeOfDirectory(const DirectoryRef& ref);

// The working-directory number of a directory, or its volume's reference
// number for a root.
SInt16 NumberOfDirectory(const DirectoryRef& ref);

// KWE_HFSpec: the full path of (dirID, vRefNum, name). name may be a full
// DOS path, which then overrides both.
OSErr FullPath(SInt32 dirID, SInt16 vRefNum, const std::string& name, std::string* path);

}  // namespace kwe::files
