# Ports through the DLL, drawn into DIB sections and windows and read back;
# the colour arithmetic and transfer-mode table natively.
kwe_wine_tests(port_tests ${CMAKE_CURRENT_LIST_DIR}/ports_test.cpp)
kwe_native_tests(colour_arithmetic_tests ${CMAKE_CURRENT_LIST_DIR}/colour_arithmetic_test.cpp)
kwe_wine_tests(shape_tests ${CMAKE_CURRENT_LIST_DIR}/shapes_test.cpp)
kwe_native_tests(shape_outline_tests ${CMAKE_CURRENT_LIST_DIR}/shape_outlines_test.cpp)
