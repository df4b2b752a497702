# The target `docs`: API documentation from the public header in docs/html of the build folder.
find_package(Doxygen QUIET)
if(NOT DOXYGEN_FOUND)
  message(STATUS "No Doxygen: there is no target docs")
  return()
endif()
configure_file(docs/Doxyfile.in docs/Doxyfile @ONLY)
add_custom_target(docs COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/docs/Doxyfile VERBATIM)
