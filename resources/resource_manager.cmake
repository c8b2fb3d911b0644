# The resource file format and the Resource Manager. The map parser and
# writer and the file-name rule are byte work and run natively (and under
# the fuzzer); the files, the chain and the calls use Win32.
target_sources(kwe_portable PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/resource_file_name.cpp
  ${CMAKE_CURRENT_LIST_DIR}/resource_map.cpp)

if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/code_resources.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_change_calls.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_data.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_file.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_file_calls.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_get_calls.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_info_calls.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_lookup.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_open.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_session.cpp
    ${CMAKE_CURRENT_LIST_DIR}/resource_write_back.cpp)
endif()
