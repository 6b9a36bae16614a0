# Runs an example in a folder of its own and compares what it prints with the text beside it.
# cmake -D "RUN=<emulator;program>" -D EXPECTED=<text> -D WORK=<folder> -P check_output.cmake
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
execute_process(
    COMMAND ${RUN}
    WORKING_DIRECTORY "${WORK}"
    RESULT_VARIABLE code
    OUTPUT_FILE "${WORK}/output.txt")
if(NOT code STREQUAL 0)
    message(FATAL_ERROR "exit code ${code}")
endif()
# --ignore-eol: Windows programs end their lines in two characters.
execute_process(COMMAND "${CMAKE_COMMAND}" -E compare_files --ignore-eol "${WORK}/output.txt" "${EXPECTED}"
                RESULT_VARIABLE different)
if(different)
    file(READ "${WORK}/output.txt" text)
    message(FATAL_ERROR "not what ${EXPECTED} holds:\n${text}")
endif()
