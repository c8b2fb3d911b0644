# Ports through the DLL, drawn into DIB sections and windows and read back;
# what a 1-bit device gets for a colour natively.
kwe_wine_tests(port_tests ${CMAKE_CURRENT_LIST_DIR}/ports_test.cpp)
kwe_native_tests(colour_arithmetic_tests ${CMAKE_CURRENT_LIST_DIR}/colour_arithmetic_test.cpp)
