# kwe_add_macintosh_application(<name> SOURCES <file>... [RESOURCES <file.r>]
#     [RESOURCE_INCLUDES <dir>...] [TITLE <text>] [FLAGS <n>]
#     [WIDTH <pixels>] [HEIGHT <pixels>])
#
# Makes <name>.exe, a Windows GUI program of Macintosh C or C++ sources: it
# links the library and the host shell, whose WinMain starts the session and
# then calls the program's own main(). The Rez description RESOURCES is
# compiled into <name>.RSR beside the .exe, where InitResources opens it.
# TITLE, FLAGS (the session flags word), WIDTH and HEIGHT make the shell's
# description of the program; a program that defines KWEHostApplication in
# its own sources gives none of them.
#
# Reads KWE_APPLICATION_DLL and KWE_APPLICATION_HOST (the library's and the
# shell's targets), KWE_APPLICATION_RUNTIME_FILES (files copied beside the
# program, empty in the library's own tree where everything shares one
# folder) and what kwe_rez_file reads.
include(${CMAKE_CURRENT_LIST_DIR}/kwe_rez_file.cmake)

function(kwe_add_macintosh_application name)
  cmake_parse_arguments(APP "" "TITLE;FLAGS;WIDTH;HEIGHT"
                        "SOURCES;RESOURCES;RESOURCE_INCLUDES" ${ARGN})
  if(DEFINED CMAKE_RUNTIME_OUTPUT_DIRECTORY)
    set(out ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  else()
    set(out ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  set(sources ${APP_SOURCES})
  if(DEFINED APP_TITLE OR DEFINED APP_FLAGS OR DEFINED APP_WIDTH OR DEFINED APP_HEIGHT)
    set(title NULL)
    if(DEFINED APP_TITLE)
      set(title "\"${APP_TITLE}\"")
    endif()
    foreach(field FLAGS WIDTH HEIGHT)
      if(NOT DEFINED APP_${field})
        set(APP_${field} 0)
      endif()
    endforeach()
    set(description ${CMAKE_CURRENT_BINARY_DIR}/${name}_application.c)
    file(CONFIGURE OUTPUT ${description} CONTENT
"/* The host shell's description of ${name}, made by kwe_add_macintosh_application. */
#include <stddef.h>
#include \"KWEHost.h\"
const KWEApplication KWEHostApplication = {${title}, ${APP_FLAGS}u, NULL, NULL, 0, ${APP_WIDTH}, ${APP_HEIGHT}, NULL};
")
    list(APPEND sources ${description})
  endif()
  add_executable(${name} WIN32 ${sources})
  target_link_libraries(${name} PRIVATE ${KWE_APPLICATION_HOST} ${KWE_APPLICATION_DLL})
  # Macintosh sources spell OSTypes as four-character constants ('TEXT').
  target_compile_options(${name} PRIVATE -Wno-multichar)
  # They also pass string literals, char to C, where the Toolbox takes
  # unsigned Pascal strings; the Macintosh compilers did not object.
  target_compile_options(${name} PRIVATE $<$<COMPILE_LANGUAGE:C>:-Wno-pointer-sign>)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX RUNTIME_OUTPUT_DIRECTORY ${out})
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_link_options(${name} PRIVATE -static-libgcc -static-libstdc++)
  else()
    target_link_options(${name} PRIVATE -static)
    # An event's message holds its WindowPtr in 32 bits, as the Macintosh
    # record has it; the 64-bit build keeps the library's records below
    # 4 GB, so the classic (WindowPtr)event.message still finds the window.
    target_compile_options(${name} PRIVATE -Wno-int-to-pointer-cast)
  endif()
  if(APP_RESOURCES)
    set(includes "")
    if(APP_RESOURCE_INCLUDES)
      set(includes INCLUDES ${APP_RESOURCE_INCLUDES})
    endif()
    get_filename_component(description ${APP_RESOURCES} ABSOLUTE)
    kwe_rez_file(${name}_resource_file ${description} ${out}/${name}.RSR ${includes})
    add_dependencies(${name} ${name}_resource_file)
  endif()
  foreach(file IN LISTS KWE_APPLICATION_RUNTIME_FILES)
    add_custom_command(TARGET ${name} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E copy_if_different ${file} ${out}
      VERBATIM)
  endforeach()
endfunction()
