# What `cpack` makes of the two components: an archive to unpack anywhere (TGZ, for Windows ZIP), and
# two Debian packages (DEB) named by Debian's rules for libraries.
set(CPACK_PACKAGE_NAME nivaro-morphology)
set(CPACK_PACKAGE_VENDOR "NIVARO")
set(CPACK_PACKAGE_CONTACT "NIVARO Morphology <support@nivaro.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_GENERATOR TGZ)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
endif()
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(runtime_package libnivaro-morphology${PROJECT_VERSION_MAJOR})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)  # what packages of hosts shall depend on:
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "A hydraulic model loads this library and hands over water levels, velocities\n\
and bed; it computes sand transport and changes the bed.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libnivaro-morphology-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "Declarations, static library, CMake package and pkg-config file for building\n\
a hydraulic model with this library.")

include(CPack)
