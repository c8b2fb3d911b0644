#include "frame/app_path_rule.h"

#include <cctype>

namespace kwe {

bool IsAbsoluteDosName(const char* name) {
  if (!name || !name[0] || name[0] == '.') return false;
  if (name[0] == '\\' && name[1] == '\\') return true;
  return std::isalpha(static_cast<unsigned char>(name[0])) && name[1] == ':' && name[2] == '\\';
}

std::string JoinBesideBase(const std::string& base, const char* name) {
  std::string dst = base;
  if (!name) return dst;
  const bool replaceExtension = name[0] == '.';
  // Walk back to the last separator (or, for ".EXT", to the character before
  // the extension's dot) and cut just behind it; reaching the start cuts nothing.
  size_t position = dst.size();
  for (size_t p = dst.size(); p-- > 0;) {
    bool separator = dst[p] == '\\' || dst[p] == ':';
    bool beforeDot = replaceExtension && p + 1 < dst.size() && dst[p + 1] == '.';
    if (separator || beforeDot) {
      position = p;
      dst.resize(p + 1);
      break;
    }
  }
  dst += position + 13 >= 128 ? "?" : name;
  return dst;
}

}  // namespace kwe
