// Finder information derived from a file's name: nothing of it is stored
// with DOS files. The type comes from the host's file-type table by
// extension, else from what Standard File last chose for that name, else
// the library's default type; the creator is always '????'.
#pragma once
#include <string>
#include <vector>

#include "Files.h"
#include "KWESession.h"

namespace kwe::files {

FInfo FinderInfoFor(const std::string& name);

// Standard File's last reply: the name, and the type of the filter it was
// chosen under (typed false when no type filter was active).
void RememberChosenFile(const std::string& name, bool typed, OSType type);
void ForgetChosenFile();

// The Standard File dialog's current filters. Until the dialog sets its own
// list they are the records of the host's file-type table, in order.
const KWEFileTypeEntry* DialogFilter(int index);
void SetDialogFilters(const std::vector<const KWEFileTypeEntry*>& filters);

}  // namespace kwe::files
