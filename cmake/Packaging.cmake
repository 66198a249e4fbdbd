# Packages for Debian, by `cpack` in the folder of a build: the command, the libraries, and what builds hosts with them.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME petal-bridge)
set(CPACK_PACKAGE_VENDOR ${petal_authors})
set(CPACK_PACKAGE_CONTACT "${petal_authors} <maintainers@petal-bridge.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
set(CPACK_DEBIAN_MODELFILE_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
set(CPACK_COMPONENTS_ALL libraries)

set(petal_abi ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME libpetal-bridge${petal_abi})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARIES_DESCRIPTION "software designs as Rational Rose 98 model files, libraries
 A modelling host links these: the plug-in that writes a design as a model
 file of Rational Rose 98, and the host's side with its model classes.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libpetal-bridge-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "software designs as Rational Rose 98 model files, headers
 What a modelling host is built with: headers, packages for CMake and for
 pkg-config.")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS libraries)

if(PETAL_BUILD_TOOL)
  list(APPEND CPACK_COMPONENTS_ALL modelfile command)
  set(CPACK_DEBIAN_MODELFILE_PACKAGE_NAME libpetal-bridge-modelfile${petal_abi})
  set(CPACK_DEBIAN_MODELFILE_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_MODELFILE_DESCRIPTION "software designs as JSON files, library
 Reads and writes the model of a modelling host as a JSON file, to keep it,
 to look at it, or to send it with a fault report.")
  set(CPACK_COMPONENT_MODELFILE_DEPENDS libraries)
  list(APPEND CPACK_COMPONENT_DEVELOPMENT_DEPENDS modelfile)

  set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME petal-bridge)
  set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION devel)
  set(CPACK_DEBIAN_COMMAND_PACKAGE_RECOMMENDS fonts-liberation)
  set(CPACK_DEBIAN_COMMAND_DESCRIPTION "reads, checks, draws, browses and writes Rational Rose model files
 The command petal looks into model files of Rational Rose of any version
 without Rose, and brings designs of other modelling tools into Rose 98.")
  set(CPACK_COMPONENT_COMMAND_DEPENDS libraries modelfile)
endif()
list(APPEND CPACK_COMPONENTS_ALL development)

# What Debian wants to find in each package.
file(READ LICENSE petal_license)
string(REGEX REPLACE "^[^\n]*\n\n[^\n]*\n\n" "" petal_license "${petal_license}")
string(REPLACE "\n\n" "\n.\n" petal_license "${petal_license}")
string(STRIP "${petal_license}" petal_license)
string(REPLACE "\n" "\n " petal_license "${petal_license}")
configure_file(cmake/debian-copyright.in debian/copyright @ONLY)
configure_file(cmake/debian-changelog.in debian/changelog @ONLY)
find_program(GZIP gzip REQUIRED)
execute_process(COMMAND ${GZIP} -9nkf ${PROJECT_BINARY_DIR}/debian/changelog COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  install(FILES ${PROJECT_BINARY_DIR}/debian/copyright ${PROJECT_BINARY_DIR}/debian/changelog.gz
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
          COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

include(CPack)
