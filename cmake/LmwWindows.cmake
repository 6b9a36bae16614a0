# What only Windows builds need. Included there and nowhere else.

# The compiler's own runtime DLLs. The library and every program share them: an exception that crosses
# the border of the DLL is caught on the other side, and std::uncaught_exceptions() stays right, only
# because both sides use one copy. LMW_RUNTIME_DLLS lists their paths; they belong beside every program
# that uses the library. Microsoft's compiler has its runtime installed with the system.
set(LMW_RUNTIME_DLLS "")
if(MINGW)
    foreach(dll IN ITEMS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(
            COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${dll}"
            OUTPUT_VARIABLE found
            OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT IS_ABSOLUTE "${found}") # the compiler names a file that it does not know by its bare name
            unset(found)
            find_file(found "${dll}" PATH_SUFFIXES lib bin NO_CACHE REQUIRED)
        endif()
        file(REAL_PATH "${found}" found)
        list(APPEND LMW_RUNTIME_DLLS "${found}")
    endforeach()
    if(CMAKE_RUNTIME_OUTPUT_DIRECTORY)
        file(COPY ${LMW_RUNTIME_DLLS} DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    endif()
endif()
