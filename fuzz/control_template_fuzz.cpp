// The Control Manager's readers of outside bytes on arbitrary input: a
// 'CNTL' template, a 'MENU' item list and a pop-up title. Each reads only
// within the bytes it is given (every input lives in a block of its exact
// size, so the sanitizer sees any byte past it), and what it answers fits
// in what it was given.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "controls/control_templates.h"

using namespace kwe::controls;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<UInt8> bytes(data, data + size);

  ControlTemplate t;
  bool whole = ReadControlTemplate(bytes.data(), bytes.size(), &t);
  if (whole != (size >= kControlTemplateFixedSize)) std::abort();
  if (whole && size_t(t.title[0]) + kControlTemplateFixedSize + 1 > size && t.title[0] != 0)
    std::abort();

  size_t itemBytes = 0;
  for (const std::string& item : MenuItemTexts(bytes.data(), bytes.size())) {
    if (item.empty() || item.size() > 255) std::abort();
    itemBytes += item.size() + 5;
  }
  if (itemBytes > size) std::abort();

  if (size > 0) {
    std::vector<UInt8> title(data, data + size);
    if (title[0] > size - 1) title[0] = UInt8(size - 1);
    title.resize(size_t(title[0]) + 1);
    SInt16 id = 0;
    PopUpMenuId(title.data(), &id);
  }
  return 0;
}
