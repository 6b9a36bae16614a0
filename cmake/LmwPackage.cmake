# What `cpack` makes of the installed tree: a Debian package, or for Windows a zip file with the DLL,
# its import library, the compiler's runtime DLLs, headers and tool (make package).
set(CPACK_PACKAGE_NAME "loamworks-common")
set(CPACK_PACKAGE_VENDOR "Loamworks")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Loamworks Core developers")
    set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON) # asks dpkg-shlibdeps which packages the library needs
    set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
        "Shared library, C++20 headers, CMake package and pkg-config file, the
command-line program lmw, documents and examples.")
endif()
include(CPack)
