# Cursors: the Macintosh-to-Windows cursor planes are byte work and run
# natively; the cache, the conversion calls and installing stand on USER.
# The library's own cursors are compiled into the DLL.
target_sources(kwe_portable PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/cursor_planes.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/cursor_cache.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cursor_conversion.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cursor_install.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cursor_library_windows.cpp
    ${CMAKE_CURRENT_LIST_DIR}/cursor_visibility.cpp
    ${CMAKE_CURRENT_LIST_DIR}/library_cursors.rc)
  set_property(SOURCE ${CMAKE_CURRENT_LIST_DIR}/library_cursors.rc APPEND PROPERTY
    OBJECT_DEPENDS
    ${CMAKE_CURRENT_LIST_DIR}/library_cursors/cross.cur
    ${CMAKE_CURRENT_LIST_DIR}/library_cursors/plus.cur
    ${CMAKE_CURRENT_LIST_DIR}/library_cursors/drag_single.cur
    ${CMAKE_CURRENT_LIST_DIR}/library_cursors/drag_multiple.cur)
endif()
