# cmake -DPROGRAM="[emulator;]program" -P ExpectCrash.cmake
# Passes when the program crashes in each of its ways, has started before, and is seen to fail every
# time: a crash that ends with the exit code of success in one run of ten is not to be relied on.
foreach(way IN ITEMS access abort exception)
    foreach(run RANGE 1 5)
        execute_process(
            COMMAND ${PROGRAM} ${way}
            OUTPUT_VARIABLE output
            ERROR_VARIABLE output
            RESULT_VARIABLE result)
        if(NOT output MATCHES "about to crash")
            message(FATAL_ERROR "${way}: did not start (${result}): ${output}")
        endif()
        if(result STREQUAL "0")
            message(FATAL_ERROR "${way}: the crash counted as a success in run ${run}")
        endif()
    endforeach()
endforeach()
# The other side: without a crash it succeeds, so that a failing result above means the crash.
execute_process(COMMAND ${PROGRAM} none OUTPUT_QUIET RESULT_VARIABLE result)
if(NOT result STREQUAL "0")
    message(FATAL_ERROR "without a crash: ${result}")
endif()
