# lmw_eigen: the matrix headers as an interface target, private to whoever links it.
# The headers are copied into the build folder and used from there, so that a cross build reaches them
# without getting this machine's own headers on its path.
find_path(
    LMW_EIGEN_INCLUDE_DIR Eigen/Core
    DOC "Folder that holds Eigen/Core"
    PATHS /usr/include /usr/local/include
    PATH_SUFFIXES eigen3
    NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(COPY "${LMW_EIGEN_INCLUDE_DIR}/Eigen" DESTINATION "${PROJECT_BINARY_DIR}/eigen")

add_library(lmw_eigen INTERFACE)
target_include_directories(lmw_eigen SYSTEM INTERFACE "${PROJECT_BINARY_DIR}/eigen")
