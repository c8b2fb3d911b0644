# find_package(KWEJMP) in a MinGW project (32- or 64-bit) gives:
#   KWEJMP::KWEJMP     KWEJMP.dll, its headers and import library
#   KWEJMP::kwe_host   the host shell: WinMain, window classes, session
#   kwe_add_macintosh_application(<name> SOURCES ... RESOURCES <file.r> ...)
#                      a program of Macintosh sources with its .RSR beside it
#                      (see kwe_add_macintosh_application.cmake)
#   kwe_rez_file(...)  a resource file compiled from a Rez description
get_filename_component(_kwe_prefix "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(_kwe_arch i686)
else()
  set(_kwe_arch x86_64)
endif()
if(NOT EXISTS ${CMAKE_CURRENT_LIST_DIR}/KWEJMPTargets-${_kwe_arch}.cmake)
  set(KWEJMP_FOUND FALSE)
  set(KWEJMP_NOT_FOUND_MESSAGE "KWEJMP is not installed for ${_kwe_arch} under ${_kwe_prefix}")
  return()
endif()
include(${CMAKE_CURRENT_LIST_DIR}/KWEJMPTargets-${_kwe_arch}.cmake)

# The Rez compiler that runs on the build machine: the native one when the
# package was made by cross-compiling, else the installed kwerez.exe.
find_program(KWE_REZ NAMES kwerez PATHS ${_kwe_prefix}/libexec/kwejmp ${_kwe_prefix}/bin
             NO_DEFAULT_PATH)
set(KWE_REZ_TYPES_DIR ${_kwe_prefix}/bin/rez-types)
set(KWE_REZ_DEPENDS "")

set(KWE_APPLICATION_DLL KWEJMP::KWEJMP)
set(KWE_APPLICATION_HOST KWEJMP::kwe_host)
# A program finds the DLL and the system resource file beside itself.
set(KWE_APPLICATION_RUNTIME_FILES ${_kwe_prefix}/${_kwe_arch}-w64-mingw32/bin/KWEJMP.dll
                                  ${_kwe_prefix}/${_kwe_arch}-w64-mingw32/bin/KWEPORT.RSR)
include(${CMAKE_CURRENT_LIST_DIR}/kwe_add_macintosh_application.cmake)
set(KWEJMP_FOUND TRUE)
