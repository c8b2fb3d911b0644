# The Resource Manager through the DLL, in a temporary directory; the map
# parser and writer and the file-name rule natively under the sanitizers.
kwe_wine_tests(resource_manager_tests
  ${KWE_ROOT}/tests/files/files_fixture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/resource_manager_test.cpp)
if(TARGET resource_manager_tests)
  target_compile_options(resource_manager_tests PRIVATE -Wno-multichar)
endif()

kwe_native_tests(resource_map_tests ${CMAKE_CURRENT_LIST_DIR}/resource_map_test.cpp)
if(TARGET resource_map_tests)
  target_link_libraries(resource_map_tests PRIVATE kwe_resource_builder)
endif()
