# What `cmake --install` puts where. The installed tree finds its own parts, so it may be moved as a whole.

include(CMakePackageConfigHelpers)

# Each part is a package for Debian: the libraries, those of model files, what builds hosts, the command.
set(petal_libraries COMPONENT libraries NAMELINK_COMPONENT development)
set(petal_modelfile COMPONENT modelfile NAMELINK_COMPONENT development)
set(petal_development COMPONENT development)
set(petal_command COMPONENT command)

install(TARGETS KivHost KivIbmRationalRose98Export EXPORT petal-bridge LIBRARY ${petal_libraries})
install(DIRECTORY host/include/kiv plugin/include/kiv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/petal-bridge
        ${petal_development})

set(petal_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/petal-bridge)
install(EXPORT petal-bridge NAMESPACE petal-bridge:: FILE petal-bridge-config.cmake DESTINATION ${petal_package_dir}
        ${petal_development})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/petal-bridge-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/petal-bridge-config-version.cmake DESTINATION ${petal_package_dir}
        ${petal_development})

set(petal_pkgconfig_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${petal_pkgconfig_dir} OUTPUT_VARIABLE petal_prefix)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE petal_libdir)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_INCLUDEDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}
           OUTPUT_VARIABLE petal_includedir)
configure_file(cmake/petal-bridge.pc.in petal-bridge.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/petal-bridge.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        ${petal_development})

# A package of its own: hosts that need no model files need not have what reads JSON.
if(PETAL_BUILD_TOOL)
  install(TARGETS KivModelFile EXPORT petal-bridge-modelfile LIBRARY ${petal_modelfile})
  install(DIRECTORY modelfile/include/kiv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/petal-bridge ${petal_development})
  set(petal_modelfile_dir ${CMAKE_INSTALL_LIBDIR}/cmake/petal-bridge-modelfile)
  install(EXPORT petal-bridge-modelfile NAMESPACE petal-bridge:: DESTINATION ${petal_modelfile_dir}
          FILE petal-bridge-modelfile-targets.cmake ${petal_development})
  install(FILES cmake/petal-bridge-modelfile-config.cmake DESTINATION ${petal_modelfile_dir}
          ${petal_development})
  install(FILES ${PROJECT_BINARY_DIR}/petal-bridge-config-version.cmake DESTINATION ${petal_modelfile_dir}
          RENAME petal-bridge-modelfile-config-version.cmake ${petal_development})
  configure_file(cmake/petal-bridge-modelfile.pc.in petal-bridge-modelfile.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/petal-bridge-modelfile.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
          ${petal_development})
endif()

set(petal_doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/petal-bridge)
install(
  FILES docs/browsing.md docs/diff.md docs/drawing.md docs/dump.md docs/git.md docs/host.md docs/import.md docs/model-file.md docs/model-file.schema.json docs/reading.md
  DESTINATION ${petal_doc_dir}/docs # links lead to ../examples
  ${petal_command})
install(DIRECTORY examples DESTINATION ${petal_doc_dir} ${petal_command} FILES_MATCHING PATTERN "*.model.json" PATTERN host
                                                                                        EXCLUDE)
install(DIRECTORY examples/host DESTINATION ${petal_doc_dir}/examples ${petal_development})
install(FILES LICENSE DESTINATION ${petal_doc_dir} ${petal_command})

if(PETAL_BUILD_TOOL)
  set(petal_loaded_dir ${CMAKE_INSTALL_LIBDIR}/petal-bridge) # what only the command uses
  install(TARGETS petal-layout petal-pictures LIBRARY DESTINATION ${petal_loaded_dir} ${petal_command})
  set_property(TARGET petal APPEND PROPERTY INSTALL_RPATH $ORIGIN/${petal_bin_to_lib}/petal-bridge)
  install(TARGETS petal RUNTIME ${petal_command})
  find_program(GZIP gzip REQUIRED)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS docs/petal.1)
  configure_file(docs/petal.1 petal.1 COPYONLY)
  execute_process(COMMAND ${GZIP} -9nkf ${PROJECT_BINARY_DIR}/petal.1 COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${PROJECT_BINARY_DIR}/petal.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 ${petal_command})
  install(FILES completions/petal.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME petal
          ${petal_command})
  install(FILES completions/_petal DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions ${petal_command})
  install(FILES completions/petal.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d ${petal_command})
endif()
