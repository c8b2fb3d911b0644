# Windows messages as Toolbox events. The key tables are byte work and build
# natively too; the translators and hooks use Win32.
target_sources(kwe_portable PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/key_tables.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/activation.cpp
    ${CMAKE_CURRENT_LIST_DIR}/command_translation.cpp
    ${CMAKE_CURRENT_LIST_DIR}/key_translation.cpp
    ${CMAKE_CURRENT_LIST_DIR}/keyboard_hook.cpp
    ${CMAKE_CURRENT_LIST_DIR}/mouse_translation.cpp)
endif()
