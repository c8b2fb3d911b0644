#include "files/finder_info.h"

#include "files/dos_path.h"
#include "frame/host_tables.h"
#include "frame/session.h"
#include "frame/system_values.h"

namespace kwe::files {
namespace {

constexpr OSType kUnknownType = 0x3F3F3F3F;  // '????'
constexpr int16_t kDefaultFileTypeValue = 36;

struct ChosenFile {
  bool typed = false;
  std::string folded;
  OSType type = 0;
} g_chosen;

bool g_ownFilters = false;
std::vector<const KWEFileTypeEntry*> g_filters;

}  // namespace

FInfo FinderInfoFor(const std::string& name) {
  FInfo info{};
  info.fdCreator = kUnknownType;
  info.fdType = static_cast<OSType>(ReadSystemValue(kDefaultFileTypeValue));
  if (g_chosen.typed && g_chosen.folded == FoldedForCompare(name)) info.fdType = g_chosen.type;
  std::string extension = TypeExtension(name);
  if (name.find('.') != std::string::npos) {
    OSType byExtension = FileTypeForExtension(extension.c_str());
    if (byExtension != kUnknownType) info.fdType = byExtension;
  }
  return info;
}

void RememberChosenFile(const std::string& name, bool typed, OSType type) {
  g_chosen.typed = typed;
  g_chosen.folded = FoldedForCompare(name);
  g_chosen.type = type;
}

void ForgetChosenFile() { g_chosen = ChosenFile{}; }

const KWEFileTypeEntry* DialogFilter(int index) {
  if (index < 0) return nullptr;
  if (g_ownFilters) return index < static_cast<int>(g_filters.size()) ? g_filters[index] : nullptr;
  const KWEFileTypeEntry* entry = TheSession().fileTypeTable;
  for (int i = 0; entry && entry->fileType != 0; ++entry, ++i)
    if (i == index) return entry;
  return nullptr;
}

void SetDialogFilters(const std::vector<const KWEFileTypeEntry*>& filters) {
  g_ownFilters = true;
  g_filters = filters;
}

}  // namespace kwe::files
