# The outline cache is portable and runs natively; shapes drawn through the
# DLL into DIB sections are read back under Wine.
kwe_native_tests(outline_cache_tests ${CMAKE_CURRENT_LIST_DIR}/outline_cache_test.cpp)
kwe_wine_tests(shape_tests ${CMAKE_CURRENT_LIST_DIR}/arithmetic_shapes_test.cpp)
