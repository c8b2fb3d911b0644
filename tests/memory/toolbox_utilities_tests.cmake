# Toolbox utilities: the portable pieces natively under the sanitizers, the
# handle-based calls through the DLL.
kwe_native_tests(utilities_portable_tests
  ${CMAKE_CURRENT_LIST_DIR}/character_conversion_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/fixed_math_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/pack_bits_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/strings_test.cpp)

kwe_wine_tests(utilities_tests
  ${CMAKE_CURRENT_LIST_DIR}/handle_utilities_test.cpp)
