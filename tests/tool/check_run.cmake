# Runs the built program itself, under the emulator when there is one, and checks exit code and output.
# cmake -D "RUN=<emulator;program;arguments>" -D CODE=<exit code> -D OUTPUT=<regular expression>
#       [-D FILE=<file that must be there afterwards>] -P check_run.cmake
if(FILE)
    file(REMOVE "${FILE}")
endif()
# The emulator may send both outputs the same way.
execute_process(COMMAND ${RUN} RESULT_VARIABLE code OUTPUT_VARIABLE text ERROR_VARIABLE text)
string(REPLACE "\r\n" "\n" text "${text}")
if(NOT code STREQUAL CODE OR NOT text MATCHES "${OUTPUT}")
    message(FATAL_ERROR "exit code ${code} instead of ${CODE}, or not \"${OUTPUT}\":\n${text}")
endif()
if(FILE AND NOT EXISTS "${FILE}")
    message(FATAL_ERROR "no file ${FILE}")
endif()
