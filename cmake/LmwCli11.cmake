# lmw_cli11: the header-only command-line parser CLI11 as an interface target.
# The headers are copied into the build folder and used from there, so that a cross build reaches them
# without getting this machine's /usr/include on its path.
find_path(
    LMW_CLI11_INCLUDE_DIR CLI/CLI.hpp
    DOC "Folder that holds CLI/CLI.hpp"
    PATHS /usr/include /usr/local/include
    NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(COPY "${LMW_CLI11_INCLUDE_DIR}/CLI" DESTINATION "${PROJECT_BINARY_DIR}/cli11")

add_library(lmw_cli11 INTERFACE)
target_include_directories(lmw_cli11 SYSTEM INTERFACE "${PROJECT_BINARY_DIR}/cli11")
