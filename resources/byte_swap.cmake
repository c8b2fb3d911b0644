# Byte-order conversion of resource data: the type table and the element
# converters (portable); KWE_ByteSwap in the session, with QuickDraw's cursor
# conversion and the host's procedure (Win32).
target_sources(kwe_portable PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/byte_swap_elements.cpp
  ${CMAKE_CURRENT_LIST_DIR}/byte_swap_records.cpp
  ${CMAKE_CURRENT_LIST_DIR}/byte_swap_table.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/byte_swap_host.cpp)
endif()
