# The tests' own resource-file builder and reader, natively with sanitizers;
# damaged files and the safety of written data through the DLL under Wine,
# checked against that builder and reader.
kwe_native_tests(resource_image_tests ${CMAKE_CURRENT_LIST_DIR}/resource_image_test.cpp)
if(TARGET resource_image_tests)
  target_link_libraries(resource_image_tests PRIVATE kwe_resource_builder)
endif()

kwe_wine_tests(resource_file_tests
  ${CMAKE_CURRENT_LIST_DIR}/resource_file_fixture.cpp
  ${KWE_ROOT}/tests/files/files_fixture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/resource_file_damage_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/resource_file_write_test.cpp)
if(TARGET resource_file_tests)
  target_link_libraries(resource_file_tests PRIVATE kwe_resource_builder)
  target_compile_options(resource_file_tests PRIVATE -Wno-multichar)
endif()
