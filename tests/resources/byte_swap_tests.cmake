# Byte-order conversion: the table and the element converters natively
# under the sanitizers; KWE_ByteSwap in a session through the DLL (the
# host's procedure, the reports).
kwe_native_tests(byte_swap_portable_tests
  ${CMAKE_CURRENT_LIST_DIR}/byte_swap_table_test.cpp)

kwe_wine_tests(byte_swap_tests
  ${CMAKE_CURRENT_LIST_DIR}/byte_swap_host_test.cpp)
