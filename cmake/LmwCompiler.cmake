# Private interface targets that say how our own sources are compiled. None of them is exported.

# Floating point: one expression has one value.
# Exact comparisons, "the same point bit for bit" and reproducible archives of results hold only if
# a*b + c is rounded twice everywhere. A fused multiply-add rounds once, on some machines and at
# some call sites only, and fast-math reorders sums, so both are off for the whole library.
add_library(lmw_floating_point INTERFACE)
if(MSVC)
    target_compile_options(lmw_floating_point INTERFACE /fp:precise)
else()
    target_compile_options(lmw_floating_point INTERFACE -ffp-contract=off -fno-fast-math)
endif()

add_library(lmw_warnings INTERFACE)
if(MSVC)
    target_compile_options(lmw_warnings INTERFACE /W4 /permissive- /utf-8 $<$<BOOL:${LMW_WERROR}>:/WX>)
else()
    target_compile_options(
        lmw_warnings
        INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wdouble-promotion
                  -Wold-style-cast -Wnon-virtual-dtor -Wformat=2 $<$<BOOL:${LMW_WERROR}>:-Werror>)
endif()

add_library(lmw_sanitizers INTERFACE)
if(LMW_SANITIZE)
    target_compile_options(lmw_sanitizers INTERFACE -fsanitize=${LMW_SANITIZE} -fno-sanitize-recover=all
                                                    -fno-omit-frame-pointer)
    target_link_options(lmw_sanitizers INTERFACE -fsanitize=${LMW_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # With its sanitizers on, GCC reports uninitialised members inside its own library's headers.
        target_compile_options(lmw_sanitizers INTERFACE -Wno-maybe-uninitialized)
    endif()
endif()

# Everything that our own targets (library, tests, tool, benchmarks) are compiled with.
add_library(lmw_build INTERFACE)
target_link_libraries(lmw_build INTERFACE lmw_floating_point lmw_warnings lmw_sanitizers)
if(WIN32)
    target_compile_definitions(lmw_build INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0A00 NOMINMAX
                                                   WIN32_LEAN_AND_MEAN)
endif()
