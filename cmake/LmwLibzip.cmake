# lmw_libzip: the archive library that the file room writes through, with zlib. Private to the
# library: it is linked in and never exported, so nothing of it shows in the installed package.
add_library(lmw_libzip INTERFACE)

if(MINGW)
    # No cross package has it: scripts/libzip-windows builds it, static.
    set(LMW_LIBZIP_DIR "${PROJECT_SOURCE_DIR}/build/libzip-windows" CACHE PATH "Installation of libzip")
    if(NOT EXISTS "${LMW_LIBZIP_DIR}/lib/libzip.a")
        message(FATAL_ERROR "No libzip in ${LMW_LIBZIP_DIR}: run scripts/libzip-windows first")
    endif()
    set(ZLIB_USE_STATIC_LIBS ON)
    find_package(ZLIB REQUIRED)
    add_library(lmw_libzip_archive STATIC IMPORTED)
    set_target_properties(
        lmw_libzip_archive
        PROPERTIES IMPORTED_LOCATION "${LMW_LIBZIP_DIR}/lib/libzip.a"
                   INTERFACE_INCLUDE_DIRECTORIES "${LMW_LIBZIP_DIR}/include"
                   INTERFACE_LINK_LIBRARIES "ZLIB::ZLIB;advapi32;bcrypt")
    target_link_libraries(lmw_libzip INTERFACE lmw_libzip_archive)
elseif(WIN32)
    find_package(libzip 1.7 REQUIRED CONFIG)
    find_package(ZLIB REQUIRED)
    target_link_libraries(lmw_libzip INTERFACE libzip::zip ZLIB::ZLIB)
else()
    # Its CMake package names programs that the development package does not bring; pkg-config works.
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(LMW_LIBZIP REQUIRED IMPORTED_TARGET libzip>=1.7)
    pkg_check_modules(LMW_ZLIB REQUIRED IMPORTED_TARGET zlib)
    target_link_libraries(lmw_libzip INTERFACE PkgConfig::LMW_LIBZIP PkgConfig::LMW_ZLIB)
endif()
