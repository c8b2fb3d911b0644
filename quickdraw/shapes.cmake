# Shapes in the five drawing verbs and the pattern calls. The outlines come
# from the sine table, portable byte work tested natively.
target_sources(kwe_portable PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/shape_outlines.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/colour_pattern.cpp
    ${CMAKE_CURRENT_LIST_DIR}/oval_drawing.cpp
    ${CMAKE_CURRENT_LIST_DIR}/pattern_calls.cpp
    ${CMAKE_CURRENT_LIST_DIR}/poly_drawing.cpp
    ${CMAKE_CURRENT_LIST_DIR}/rect_drawing.cpp
    ${CMAKE_CURRENT_LIST_DIR}/region_drawing.cpp
    ${CMAKE_CURRENT_LIST_DIR}/shape_drawing.cpp)
endif()
