# Installs the tree under test into a fresh prefix (a copy, nothing is
# rebuilt), then configures and builds package_program/ against it alone,
# as a user's own project, runs the program under Wine and reads what it
# printed.
#   cmake -DTREE=<build tree> -DSOURCE=<package_program> -DWORK=<scratch>
#         -DTOOLCHAIN=<name> -DEMULATOR=<wine> -P package_test.cmake
file(REMOVE_RECURSE ${WORK})
set(prefix ${WORK}/prefix)

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${what} failed (${status}):\n${out}")
  endif()
  set(output "${out}" PARENT_SCOPE)
endfunction()

run("installing" ${CMAKE_COMMAND} --install ${TREE} --prefix ${prefix})
foreach(file include/MacWindows.h include/KWEHost.h lib/cmake/KWEJMP/KWEJMPConfig.cmake bin/rez-types/Types.r)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "the package lacks ${file}")
  endif()
endforeach()
run("configuring" ${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/build -G Ninja
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_TOOLCHAIN_FILE=${prefix}/lib/cmake/KWEJMP/${TOOLCHAIN})
run("building" ${CMAKE_COMMAND} --build ${WORK}/build)
foreach(file greeting.exe greeting.RSR KWEJMP.dll KWEPORT.RSR)
  if(NOT EXISTS ${WORK}/build/${file})
    message(FATAL_ERROR "the program's folder lacks ${file}")
  endif()
endforeach()
run("running greeting.exe" ${EMULATOR} ${WORK}/build/greeting.exe)
if(NOT output MATCHES "greeting: Hello from the installed package; frame pixel black")
  message(FATAL_ERROR "greeting.exe printed:\n${output}")
endif()
message(STATUS "${output}")
