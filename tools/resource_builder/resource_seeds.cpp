#include "resource_builder/resource_seeds.h"

#include <utility>

namespace resource_builder {

namespace {

// name "" gives a resource whose name is empty, null one without a name.
Resource Make(const char (&type)[5], std::int16_t id, Bytes data, const char* name = nullptr,
              std::uint8_t attributes = 0) {
  Resource r = MakeResource(type, id, std::move(data), name ? name : "", attributes);
  r.named = name != nullptr;
  return r;
}

Bytes Pascal(const std::string& text) {
  Bytes out{static_cast<std::uint8_t>(text.size())};
  Append(out, text);
  return out;
}

Bytes StringList(const std::vector<std::string>& strings) {
  Bytes out{0, static_cast<std::uint8_t>(strings.size())};
  for (const std::string& s : strings) {
    Append(out, Pascal(s));
  }
  return out;
}

}  // namespace

std::vector<SeedFile> SeedFiles() {
  std::vector<SeedFile> seeds;
  // The 286-byte file CreateResFile makes.
  seeds.push_back({"empty.rsr", BuildResourceImage({})});

  seeds.push_back(
      {"one_unnamed.rsr", BuildResourceImage({Make("TEXT", 128, {'h', 'e', 'l', 'l', 'o'})})});

  seeds.push_back(
      {"named_and_attributes.rsr",
       BuildResourceImage({
           Make("STR ", 128, Pascal("Greeting"), "Hello", 0x20),
           Make("STR ", -16096, Pascal("System string"), nullptr, 0x40),
           Make("STR#", 129, StringList({"One", "Two", "Three"}), "Numbers"),
           Make("PAT ", 130, {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55}, "", 0x04),
       })});

  // Many types, each with a few resources, and a zero-length one.
  std::vector<Resource> many;
  const std::uint32_t types[] = {
      TypeCode("TEXT"), TypeCode("STR "), TypeCode("STR#"), TypeCode("PAT "),
      TypeCode("PAT#"), TypeCode("ICON"), TypeCode("vers"), TypeCode("MENU"),
      TypeCode("WIND"), TypeCode("DLOG"), TypeCode("DITL"), TypeCode("ALRT"),
      TypeCode("CNTL"), TypeCode("MBAR"), TypeCode("PICT"), TypeCode("clut")};
  for (std::size_t t = 0; t < sizeof types / sizeof *types; ++t) {
    for (std::int16_t id = 0; id < 3; ++id) {
      Resource r;
      r.type = types[t];
      r.id = static_cast<std::int16_t>(128 + id);
      r.data.assign(static_cast<std::size_t>(id) * 6, static_cast<std::uint8_t>(t));
      many.push_back(r);
    }
  }
  seeds.push_back({"many_types.rsr", BuildResourceImage(many)});

  // Two references sharing one data block, with the map 16 bytes behind the
  // data and unused bytes after it.
  std::vector<Resource> shared = {Make("TEXT", 1, {'s', 'h', 'a', 'r', 'e', 'd'}, "first"),
                                  Make("TEXT", 2, {}, "second")};
  shared[1].sharesDataOf = 0;
  ImageOptions gaps;
  gaps.gapBeforeMap = 16;
  gaps.trailingBytes = 40;
  seeds.push_back({"shared_block_and_gaps.rsr", BuildResourceImage(shared, gaps)});

  // A resource file lying 512 bytes into a bigger file.
  ImageOptions embedded;
  embedded.baseOffset = 512;
  seeds.push_back({"embedded_at_512.bin",
                   BuildResourceImage({Make("STR ", 128, Pascal("inside"), "in")}, embedded)});
  return seeds;
}

}  // namespace resource_builder
