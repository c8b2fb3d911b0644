// The filter list of the open and save dialogs, made from the host's
// file-type table (KWE_Set_Tovel) and the types an application asks for.
// Byte work only, so it also runs natively.
#pragma once
#include <string>
#include <vector>

#include "KWEFileTypes.h"

namespace kwe::standardfile {

struct DialogFilters {
  // The table's records in the order the dialog lists them; a filter index
  // of the common dialog (less one) names one of them. Records the Windows
  // string never shows are not here.
  std::vector<const KWEFileTypeEntry*> records;
  // "Description (*.EXT)\0*.EXT\0...\0" for OPENFILENAMEA.lpstrFilter: one
  // pair per record, then "All Files (*.*)" when it is offered.
  std::string windowsFilter;
};

// A typeCount of 0 or less asks for every file; otherwise only records whose
// type is in types[0..typeCount) are listed, and "All Files" is added only
// when a file of the default type may be asked for (defaultType is in the
// list) or no record matched, so the dialog never lists nothing.
DialogFilters FiltersForTypes(const KWEFileTypeEntry* table, int typeCount, const OSType* types,
                              OSType defaultType);

}  // namespace kwe::standardfile
