# Ports through the DLL, drawn into DIB sections and windows and read back.
kwe_wine_tests(port_tests ${CMAKE_CURRENT_LIST_DIR}/ports_test.cpp)
# The rectangle calculations are arithmetic only and run natively.
kwe_native_tests(rect_tests ${CMAKE_CURRENT_LIST_DIR}/rect_calculations_test.cpp)
