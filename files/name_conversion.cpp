#include "files/name_conversion.h"

#include "memory/character_conversion.h"

namespace kwe::files {

// Byte for byte through the character tables (no expansions, no password
// mode), so that a name read back from the directory is the name given.
std::string MacNameToAnsi(ConstStr255Param name) {
  if (!name) return std::string();
  std::string ansi(name[0], '\0');
  text::MacToAnsiBytes(name + 1, reinterpret_cast<UInt8*>(&ansi[0]), ansi.size());
  return ansi;
}

bool AnsiNameToMac(const std::string& name, StringPtr out, size_t maxLength) {
  size_t n = name.size() < maxLength ? name.size() : maxLength;
  out[0] = static_cast<unsigned char>(n);
  text::AnsiToMacBytes(reinterpret_cast<const UInt8*>(name.data()), out + 1, n);
  return n == name.size();
}

}  // namespace kwe::files
