# QuickDraw text and the Font Manager. The font map's parsing and writing is
# byte work and runs natively too.
target_sources(kwe_portable PRIVATE ${CMAKE_CURRENT_LIST_DIR}/font_map.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/font_list.cpp
    ${CMAKE_CURRENT_LIST_DIR}/font_lookup.cpp
    ${CMAKE_CURRENT_LIST_DIR}/font_manager.cpp
    ${CMAKE_CURRENT_LIST_DIR}/font_map_file.cpp
    ${CMAKE_CURRENT_LIST_DIR}/font_metrics.cpp
    ${CMAKE_CURRENT_LIST_DIR}/port_font.cpp
    ${CMAKE_CURRENT_LIST_DIR}/port_font_settings.cpp
    ${CMAKE_CURRENT_LIST_DIR}/text_drawing.cpp
    ${CMAKE_CURRENT_LIST_DIR}/text_ink.cpp
    ${CMAKE_CURRENT_LIST_DIR}/text_measuring.cpp)
endif()
