// How a byte_swap_fuzz input is laid out, shared with the seed writer: a
// byte choosing the type (every type of the table, then one the table does
// not know), a byte choosing the direction, then the resource's data.
#pragma once
#include <cstddef>
#include <cstdint>

#include "resources/byte_swap_table.h"

namespace kwe_fuzz {

constexpr size_t kHeaderBytes = 2;

inline int TypeChoices() { return kwe::byteswap::TableTypeCount() + 1; }

inline ResType ChosenType(uint8_t selector) {
  int index = selector % TypeChoices();
  return index < kwe::byteswap::TableTypeCount() ? kwe::byteswap::TableType(index)
                                                 : kwe::byteswap::TypeCode("XYZW");
}

inline UInt32 ChosenDirection(uint8_t selector) { return selector & 1; }

}  // namespace kwe_fuzz
