// What the File Manager's exported calls share: Toolbox names to DOS paths,
// the existence test, and the ioResult of parameter blocks.
#pragma once
#include <windows.h>

#include <string>

#include "Files.h"

namespace kwe::files {

// KWE_HFSpec over a Pascal name in the Macintosh character set.
OSErr PathOf(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name, std::string* path);
OSErr PathOfSpec(const FSSpec* spec, std::string* path);

// Windows' attributes of a path with critical-error boxes off (a floppy
// drive without a disk answers "not found" instead of asking the user).
DWORD QuietAttributes(const std::string& path);
inline bool PathExists(const std::string& path) {
  return QuietAttributes(path) != INVALID_FILE_ATTRIBUTES;
}

// The last component of a path, as a Macintosh name of at most maxLength.
void LeafNameToMac(const std::string& path, StringPtr out, size_t maxLength);

// Every parameter-block call ends here: the result goes to ioResult too.
template <class Block>
OSErr Finish(Block* pb, OSErr err) {
  pb->ioResult = err;
  return err;
}

}  // namespace kwe::files
