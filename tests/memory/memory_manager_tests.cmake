# Memory Manager and small-block heaps.
kwe_wine_tests(memory_tests
  ${CMAKE_CURRENT_LIST_DIR}/handles_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/handle_resize_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/handle_copies_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/pointers_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/purging_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/zone_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/small_block_heaps_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/heap_check_test.cpp)

kwe_native_tests(memory_portable_tests
  ${CMAKE_CURRENT_LIST_DIR}/small_block_layout_test.cpp)
