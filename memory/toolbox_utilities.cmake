# Toolbox utilities: fixed-point arithmetic, bits, PackBits, Pascal strings,
# the character table and the Macintosh/ANSI conversion (portable); Munger,
# string handles and the resource shortcuts (on the Memory Manager's handles).
target_sources(kwe_portable PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/bit_routines.cpp
  ${CMAKE_CURRENT_LIST_DIR}/character_conversion.cpp
  ${CMAKE_CURRENT_LIST_DIR}/character_table.cpp
  ${CMAKE_CURRENT_LIST_DIR}/fixed_math.cpp
  ${CMAKE_CURRENT_LIST_DIR}/fixed_trig.cpp
  ${CMAKE_CURRENT_LIST_DIR}/indexed_lists.cpp
  ${CMAKE_CURRENT_LIST_DIR}/pack_bits.cpp
  ${CMAKE_CURRENT_LIST_DIR}/pascal_strings.cpp
  ${CMAKE_CURRENT_LIST_DIR}/string_case.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/clock_and_screen.cpp
    ${CMAKE_CURRENT_LIST_DIR}/munger.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_shortcuts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/string_handles.cpp)
endif()
