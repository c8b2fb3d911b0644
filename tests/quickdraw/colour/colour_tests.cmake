# What a 1-bit device gets for a colour, and the colour tables' laws,
# natively.
kwe_native_tests(colour_arithmetic_tests
  ${CMAKE_CURRENT_LIST_DIR}/colour_arithmetic_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/colour_tables_test.cpp)
