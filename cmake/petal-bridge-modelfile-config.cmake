include(CMakeFindDependencyMacro)
find_dependency(petal-bridge)
include(${CMAKE_CURRENT_LIST_DIR}/petal-bridge-modelfile-targets.cmake)
