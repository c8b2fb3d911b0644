# Memory Manager and small-block heaps.
kwe_wine_tests(memory_tests
  ${CMAKE_CURRENT_LIST_DIR}/handles_test.cpp
  ${CMAKE_CURRENT_LIST_DIR}/small_blocks_test.cpp)

kwe_native_tests(memory_portable_tests
  ${CMAKE_CURRENT_LIST_DIR}/small_block_layout_test.cpp)
