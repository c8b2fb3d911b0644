# Ports over device contexts: the port table, the pen and lines, colours and
# the Window Manager's DC entry points. The colour arithmetic is byte work
# and runs natively too.
target_sources(kwe_portable PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/colour_arithmetic.cpp
  ${CMAKE_CURRENT_LIST_DIR}/transfer_modes.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/bottlenecks.cpp
    ${CMAKE_CURRENT_LIST_DIR}/coordinates.cpp
    ${CMAKE_CURRENT_LIST_DIR}/current_port.cpp
    ${CMAKE_CURRENT_LIST_DIR}/graf_init.cpp
    ${CMAKE_CURRENT_LIST_DIR}/graphics_records.cpp
    ${CMAKE_CURRENT_LIST_DIR}/line_drawing.cpp
    ${CMAKE_CURRENT_LIST_DIR}/pattern_brush.cpp
    ${CMAKE_CURRENT_LIST_DIR}/pen_state.cpp
    ${CMAKE_CURRENT_LIST_DIR}/pixel_reading.cpp
    ${CMAKE_CURRENT_LIST_DIR}/polygon_recording.cpp
    ${CMAKE_CURRENT_LIST_DIR}/port_colours.cpp
    ${CMAKE_CURRENT_LIST_DIR}/port_geometry.cpp
    ${CMAKE_CURRENT_LIST_DIR}/port_layouts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/port_open_close.cpp
    ${CMAKE_CURRENT_LIST_DIR}/port_patterns.cpp
    ${CMAKE_CURRENT_LIST_DIR}/port_table.cpp
    ${CMAKE_CURRENT_LIST_DIR}/random_numbers.cpp
    ${CMAKE_CURRENT_LIST_DIR}/region_recording.cpp
    ${CMAKE_CURRENT_LIST_DIR}/standard_procedures.cpp
    ${CMAKE_CURRENT_LIST_DIR}/standard_procedures_pending.cpp
    ${CMAKE_CURRENT_LIST_DIR}/window_ports.cpp)
endif()
