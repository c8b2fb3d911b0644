# Runs one fuzz target for a bounded time over a fresh copy of its seeds;
# fails when libFuzzer stops on a finding. Called by the fuzz.<name> tests.
file(REMOVE_RECURSE ${CORPUS})
file(MAKE_DIRECTORY ${CORPUS} ${ARTIFACTS})
foreach(dir ${SEEDS} ${GENERATED})
  if(IS_DIRECTORY ${dir})
    file(GLOB seeds ${dir}/*)
    list(FILTER seeds EXCLUDE REGEX "/\\.written$")
    if(seeds)
      file(COPY ${seeds} DESTINATION ${CORPUS})
    endif()
  endif()
endforeach()

execute_process(
  COMMAND ${PROGRAM} -max_total_time=${SECONDS} -rss_limit_mb=2048 -timeout=10 -max_len=4096
          -print_final_stats=1 -artifact_prefix=${ARTIFACTS}/ ${CORPUS}
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} stopped with ${status}; the input is in ${ARTIFACTS}")
endif()
