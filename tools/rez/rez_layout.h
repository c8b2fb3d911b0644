// Turning a declaration and its values into resource bytes (encoding), and
// resource bytes back into values (decoding). Both walk the fields bit by
// bit from the start of the resource, as Rez lays them out: numbers
// big-endian, strings byte by byte, labels counting bits from the start.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "rez/rez_template.h"

namespace rez {

// What the $$ID, $$Type, $$Attributes and $$Name functions answer.
struct ResourceContext {
  std::uint32_t type = 0;
  std::int16_t id = 0;
  std::string name;
  std::uint8_t attributes = 0;
};

// The bytes of the values laid out by the declaration. A value that does
// not fit its field, or an array whose count disagrees with its elements,
// is reported at the value's place.
std::string Encode(const TypeDecl& decl, const std::vector<Value>& values,
                   const ResourceContext& context, const SourceSet& sources);

// The values that encode back into exactly these bytes, or false when the
// declaration cannot describe them (the decompiler then writes raw data).
bool Decode(const TypeDecl& decl, const std::string& data, const ResourceContext& context,
            const SourceSet& sources, std::vector<Value>& values);

// True for fields that take a value in a resource statement.
bool TakesValue(const Field& f);

}  // namespace rez
