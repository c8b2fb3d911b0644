# Pixel patterns and colour icons through the DLL, with 'ppat' and 'cicn'
# resources in a temporary file.
kwe_wine_tests(pattern_tests ${CMAKE_CURRENT_LIST_DIR}/colour_resources_test.cpp)
if(TARGET pattern_tests)
  target_link_libraries(pattern_tests PRIVATE kwe_resource_builder)
endif()
