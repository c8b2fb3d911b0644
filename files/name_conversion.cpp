#include "files/name_conversion.h"

#include <cstring>

namespace kwe::files {

// The character-set tables of the Macintosh-to-ANSI conversion will map these
// bytes; until they do, names pass through unchanged (ASCII is the same in
// both sets).
std::string MacNameToAnsi(ConstStr255Param name) {
  if (!name) return std::string();
  return std::string(reinterpret_cast<const char*>(name + 1), name[0]);
}

bool AnsiNameToMac(const std::string& name, StringPtr out, size_t maxLength) {
  size_t n = name.size() < maxLength ? name.size() : maxLength;
  out[0] = static_cast<unsigned char>(n);
  std::memcpy(out + 1, name.data(), n);
  return n == name.size();
}

}  // namespace kwe::files
