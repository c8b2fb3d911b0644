# Text and fonts through the DLL, drawn into DIB sections and read back; the
# font map's parser natively.
kwe_wine_tests(text_tests
  ${KWE_ROOT}/tests/files/files_fixture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/text_test.cpp)
kwe_native_tests(font_map_tests ${CMAKE_CURRENT_LIST_DIR}/font_map_test.cpp)
