# Toolchain: 64-bit Windows with Debian's MinGW-w64 (the variant whose threads are POSIX threads).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(lmw_triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${lmw_triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${lmw_triple}-g++-posix)
set(CMAKE_RC_COMPILER ${lmw_triple}-windres)

# Libraries and headers come from the cross compiler's own tree only; programs from this machine.
set(CMAKE_FIND_ROOT_PATH /usr/${lmw_triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Windows programs (tests, tools run by the build) start through Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run")
