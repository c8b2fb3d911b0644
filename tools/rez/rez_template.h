// What a Rez "type" declaration describes (the fields of a resource, in
// order, with their widths, constants and labels), the values a "resource"
// statement gives those fields, and the resources that come out.
#pragma once
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "rez/rez_expr.h"

namespace rez {

enum class FieldKind { Bits, String, Point, Rect, Fill, Align, Array, Switch, Label };
enum class StringKind { Plain, Pascal, C, Wide };
enum class Radix { Decimal, Hex, Octal, Binary, Literal };

// A symbolic constant of a field: "name = value" in the declaration.
struct Symbol {
  std::string name;
  bool isString = false;
  std::int64_t number = 0;
  std::string bytes;
};

struct Field;
struct Case {
  std::string name;
  std::vector<Field> fields;
};

struct Field {
  FieldKind kind = FieldKind::Bits;
  Location where;
  int bits = 0;  // Bits: width; Fill: bits to add; Align: boundary in bits
  bool isUnsigned = false;
  bool isKey = false;  // the field that tells a switch's cases apart
  Radix radix = Radix::Decimal;
  StringKind stringKind = StringKind::Plain;
  int fixedLength = -1;  // string[n], pstring[n], cstring[n]: bytes of text
  bool hexString = false;
  std::vector<Symbol> symbols;
  bool hasValue = false;  // "= expression": the field takes no value of its own
  Expr value;
  std::string stringValue;  // a string field's "= string"
  std::string label;        // Array, Label
  bool hasCount = false;    // array [count]
  Expr count;
  bool wide = false;
  std::vector<Field> fields;  // Array element
  std::vector<Case> cases;    // Switch
  int depth = 0;              // enclosing arrays (labels are indexed by them)
};

struct TypeDecl {
  std::uint32_t type = 0;
  bool ranged = false;
  std::int16_t lowId = 0, highId = 0;
  std::vector<Field> fields;
};

// The value a resource statement gives one field that takes a value.
struct Value {
  enum class Kind { Number, Bytes, Numbers, Array, Case };
  Kind kind = Kind::Number;
  Location where;
  std::int64_t number = 0;
  std::string bytes;
  std::vector<std::int64_t> numbers;  // point (2), rect (4)
  std::vector<std::vector<Value>> elements;
  int caseIndex = -1;
  std::vector<Value> caseValues;
};

struct CompiledResource {
  std::uint32_t type = 0;
  std::int16_t id = 0;
  bool named = false;
  std::string name;
  std::uint8_t attributes = 0;
  std::string data;
};

// Attribute keywords, with the bit each one sets or clears.
struct AttributeWord {
  const char* set;
  const char* clear;
  std::uint8_t bit;
};
extern const AttributeWord kAttributeWords[6];

class TypeTable {
 public:
  void Add(TypeDecl decl);
  // The declaration for a resource: one whose ID range holds the ID, else
  // the one without a range; null when the type is not declared.
  const TypeDecl* Find(std::uint32_t type, std::int16_t id) const;

 private:
  std::map<std::uint32_t, std::vector<TypeDecl>> types_;
};

}  // namespace rez
