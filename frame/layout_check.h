// Compile-time checks of published record layouts.
#pragma once
#include <cstddef>

#define KWE_FIELD(type, field, offset) \
  static_assert(offsetof(type, field) == (offset), #type "." #field " at " #offset)
