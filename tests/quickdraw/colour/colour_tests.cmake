# What a 1-bit device gets for a colour, and the colour tables' laws,
# natively; devices and pixel maps through the DLL.
kwe_native_tests(colour_arithmetic_tests
  ${CMAKE_CURRENT_LIST_DIR}/colour_arithmetic_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/colour_tables_test.cpp)
kwe_wine_tests(colour_tests ${CMAKE_CURRENT_LIST_DIR}/devices_test.cpp)
