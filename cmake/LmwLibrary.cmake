# lmw_sources(PUBLIC <headers> PRIVATE <sources and internal headers>)
# Called by the CMakeLists.txt of each subsystem folder. PUBLIC headers are declared here once: that
# declaration is also what is installed, what must compile alone, and what common/common.h includes.
function(lmw_sources)
    cmake_parse_arguments(ARG "" "" "PUBLIC;PRIVATE" ${ARGN})
    list(TRANSFORM ARG_PUBLIC PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    list(TRANSFORM ARG_PRIVATE PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    target_sources(lmwcommon_objects PRIVATE ${ARG_PRIVATE})
    target_sources(lmwcommon PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${ARG_PUBLIC})
    set_property(GLOBAL APPEND PROPERTY LMW_PUBLIC_HEADERS ${ARG_PUBLIC})
endfunction()
