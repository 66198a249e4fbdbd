# What holds for every target: the language, the warnings, hidden symbols, and where results lie.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

# Where programs look for the libraries that they open when they need them.
set(CMAKE_BUILD_RPATH ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

# Installed programs and libraries find each other wherever the tree is put.
file(RELATIVE_PATH petal_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/${petal_bin_to_lib}")

add_library(petal-compiling INTERFACE)
# What a library of this project defines is not replaced by another's, so calls within it go straight there.
target_compile_options(petal-compiling INTERFACE -fno-semantic-interposition -fno-plt)
# Coordinates are scaled operation by operation; a fused multiply-add would round differently.
target_compile_options(petal-compiling INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror -ffp-contract=off)

option(PETAL_SANITIZE "Instrument with the address and undefined-behaviour sanitizers, and for fuzzing (needs Clang)" OFF)
if(PETAL_SANITIZE)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "PETAL_SANITIZE needs the Clang compiler")
  endif()
  target_compile_options(petal-compiling INTERFACE -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  # The sanitizers are a library of their own, so that libraries may still leave no name undefined.
  set(petal_sanitizers -fsanitize=fuzzer-no-link,address,undefined -shared-libsan)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libclang_rt.asan-${CMAKE_SYSTEM_PROCESSOR}.so
                  OUTPUT_VARIABLE petal_sanitizer_library OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  cmake_path(GET petal_sanitizer_library PARENT_PATH petal_sanitizer_folder)
  # The sanitizer opens libraries on behalf of the program. By the older tag that is looked for in the program's folders.
  target_link_options(petal-compiling INTERFACE ${petal_sanitizers} -Wl,-rpath,${petal_sanitizer_folder}
                                                -Wl,--disable-new-dtags)
endif()
