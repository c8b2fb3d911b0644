#include "resources/resource_file_name.h"

namespace kwe::resources {

std::string ResourceFileName(const std::string& name, bool creating) {
  if (name.size() >= 3 && name[1] == ':' && name[2] == '\\') return name;
  std::string result = name;
  if (result.find(' ') != std::string::npos) {
    std::string squeezed;
    for (char c : result)
      if (c != ' ' && c != '\t') squeezed += c;
    result = squeezed.substr(0, 8);
  }
  size_t tail = result.size() < 4 ? 0 : result.size() - 4;
  bool dotNearEnd = result.find('.', tail) != std::string::npos;
  if (result.size() > 12 || !dotNearEnd) {
    result = result.substr(0, result.find('.')) + ".rsr";
  } else if (creating && result.back() == '.') {
    result.pop_back();
  }
  return result;
}

}  // namespace kwe::resources
