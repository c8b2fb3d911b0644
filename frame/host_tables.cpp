#include "frame/host_tables.h"

#include <cctype>

#include "frame/session.h"

namespace kwe {

OSType FileTypeForExtension(const char* extension) {
  // A host may list an extension twice; the last record that has it wins.
  OSType found = 0x3F3F3F3F;  // '????'
  for (const KWEFileTypeEntry* entry = TheSession().fileTypeTable; entry && entry->fileType != 0;
       ++entry) {
    bool same = true;
    for (int i = 0; i < 3 && same; ++i) {
      char want = extension[i];  // stops at the extension's own NUL
      char have = entry->extension[i];
      same = std::toupper(static_cast<unsigned char>(want)) ==
             std::toupper(static_cast<unsigned char>(have));
      if (!want) break;
    }
    if (same) found = entry->fileType;
  }
  return found;
}

const void* MenuOverrideTable() { return TheSession().menuOverrideTable; }

}  // namespace kwe

KWE_API void KWE_CALL KWE_Set_Tovel(const KWEFileTypeEntry* fileTypes, const void* menuOverrides) {
  kwe::TheSession().fileTypeTable = fileTypes;
  kwe::TheSession().menuOverrideTable = menuOverrides;
}
