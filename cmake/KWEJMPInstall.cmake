# What `cmake --install` puts under the prefix, one tree per architecture
# beside the other:
#   include/                         the headers (the same from both trees)
#   <arch>-w64-mingw32/bin/          KWEJMP.dll and the system resource file
#   <arch>-w64-mingw32/lib/          the DLL's import library and kwe_host
#   bin/                             kwerez.exe, kwederez.exe, rez-types/
#   libexec/kwejmp/kwerez            the build machine's kwerez (cross builds)
#   lib/cmake/KWEJMP/                the package files
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(KWE_ARCH i686)
else()
  set(KWE_ARCH x86_64)
endif()
set(KWE_ARCH_DIR ${KWE_ARCH}-w64-mingw32)

install(TARGETS KWEJMP kwe_host kwe_host_procedures EXPORT KWEJMPTargets
        RUNTIME DESTINATION ${KWE_ARCH_DIR}/bin
        LIBRARY DESTINATION ${KWE_ARCH_DIR}/bin
        ARCHIVE DESTINATION ${KWE_ARCH_DIR}/lib)
install(EXPORT KWEJMPTargets NAMESPACE KWEJMP:: DESTINATION lib/cmake/KWEJMP
        FILE KWEJMPTargets-${KWE_ARCH}.cmake)
install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/KWEPORT.RSR DESTINATION ${KWE_ARCH_DIR}/bin)
install(DIRECTORY ${KWE_ROOT}/include/ DESTINATION include FILES_MATCHING PATTERN "*.h")
install(FILES ${KWE_ROOT}/cmake/KWEJMPConfig.cmake ${KWE_ROOT}/cmake/kwe_rez_file.cmake
              ${KWE_ROOT}/cmake/kwe_add_macintosh_application.cmake
              ${KWE_ROOT}/cmake/toolchain-${KWE_ARCH}-w64-mingw32.cmake
        DESTINATION lib/cmake/KWEJMP)
if(CMAKE_CROSSCOMPILING)
  install(PROGRAMS ${KWE_REZ} DESTINATION libexec/kwejmp)
endif()
