# What `cmake --install` puts into a prefix: the library, its headers, a CMake package, a pkg-config
# file, the change log. The tool and the examples install themselves where they are built.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(LMW_DOC_DIR "${CMAKE_INSTALL_DATAROOTDIR}/doc/loamworks-common")
# A folder of their own: the headers' first folder is called "common", and so may be that of others.
set(LMW_HEADER_DIR "${CMAKE_INSTALL_INCLUDEDIR}/loamworks")
set(LMW_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/LoamworksCommon")

install(
    TARGETS lmwcommon
    EXPORT LoamworksCommonTargets
    FILE_SET HEADERS DESTINATION "${LMW_HEADER_DIR}"
    FILE_SET generated_headers DESTINATION "${LMW_HEADER_DIR}")
install(
    EXPORT LoamworksCommonTargets
    NAMESPACE loamworks::
    DESTINATION "${LMW_PACKAGE_DIR}")

# The library has no public dependency, so the configuration finds nothing but its own targets.
configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/LoamworksCommonConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/LoamworksCommonConfig.cmake"
    INSTALL_DESTINATION "${LMW_PACKAGE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/LoamworksCommonConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/LoamworksCommonConfig.cmake"
              "${PROJECT_BINARY_DIR}/LoamworksCommonConfigVersion.cmake" DESTINATION "${LMW_PACKAGE_DIR}")

# Relative to its own folder, so that an installed tree can be moved.
file(RELATIVE_PATH LMW_PC_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file("${CMAKE_CURRENT_LIST_DIR}/loamworks-common.pc.in"
               "${PROJECT_BINARY_DIR}/loamworks-common.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/loamworks-common.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

install(FILES "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
        DESTINATION "${LMW_DOC_DIR}")
install(
    DIRECTORY "${PROJECT_SOURCE_DIR}/docs"
    DESTINATION "${LMW_DOC_DIR}"
    FILES_MATCHING
    PATTERN "*.md"
    PATTERN "*.svg")
if(WIN32)
    # The compiler's runtime belongs beside the DLL (docs/windows.md).
    install(FILES ${LMW_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()
