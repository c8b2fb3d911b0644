# Memory Manager and small-block heaps.
target_sources(kwe_portable PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/small_block_layout.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/allocation_ladder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/grow_zone.cpp
    ${CMAKE_CURRENT_LIST_DIR}/handle_copies.cpp
    ${CMAKE_CURRENT_LIST_DIR}/handle_storage.cpp
    ${CMAKE_CURRENT_LIST_DIR}/handles.cpp
    ${CMAKE_CURRENT_LIST_DIR}/master_blocks.cpp
    ${CMAKE_CURRENT_LIST_DIR}/memory_figures.cpp
    ${CMAKE_CURRENT_LIST_DIR}/pointers.cpp
    ${CMAKE_CURRENT_LIST_DIR}/purging.cpp
    ${CMAKE_CURRENT_LIST_DIR}/small_block_heaps.cpp
    ${CMAKE_CURRENT_LIST_DIR}/zone.cpp)
endif()
