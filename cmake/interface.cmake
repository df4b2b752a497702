# The public header states the interface. What else states it is made from the header while configuring,
# in the build folder: the names that leave the library, as the linkers want them, and the Fortran
# module.
set(NIVARO_HEADER ${PROJECT_SOURCE_DIR}/include/nivaro_morphology.h)
set(NIVARO_INTERFACE ${PROJECT_BINARY_DIR}/nivaro_morphology)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${NIVARO_HEADER})

file(READ ${NIVARO_HEADER} header)
string(REGEX MATCHALL "\n(extern )?NIVARO_API [a-z0-9_* ]+ [A-Z][A-Z0-9_]*" declarations "${header}")
list(TRANSFORM declarations REPLACE "^\n.* " "" OUTPUT_VARIABLE names)
list(JOIN names "\n" lines)
file(CONFIGURE OUTPUT ${NIVARO_INTERFACE}.txt CONTENT "${lines}\n" @ONLY)
list(JOIN names ";\n    " lines)
file(CONFIGURE OUTPUT ${NIVARO_INTERFACE}.map @ONLY
     CONTENT "{\n  global:\n    ${lines};\n  local:\n    *;\n};\n")
list(TRANSFORM declarations REPLACE "^\nextern .* (.*)$" "\\1 DATA" OUTPUT_VARIABLE lines)
list(TRANSFORM lines REPLACE "^\n.* " "")
list(JOIN lines "\n  " lines)
file(CONFIGURE OUTPUT ${NIVARO_INTERFACE}.def @ONLY
     CONTENT "LIBRARY nivaro_morphology\nEXPORTS\n  ${lines}\n")

# A host that takes this project into its own build, and has no Fortran, needs no Python.
get_property(languages GLOBAL PROPERTY ENABLED_LANGUAGES)
set(wanted QUIET)
if(PROJECT_IS_TOP_LEVEL OR NIVARO_EXAMPLES OR Fortran IN_LIST languages)
  set(wanted REQUIRED)
endif()
find_package(Python3 3.9 ${wanted} COMPONENTS Interpreter)
if(NOT Python3_FOUND)
  message(STATUS "No Python 3.9: the Fortran module of NIVARO Morphology is not made")
  return()
endif()
set(maker ${PROJECT_SOURCE_DIR}/scripts/make_fortran_module.py)
set(template ${PROJECT_SOURCE_DIR}/src/exports/nivaro_morphology.f90.in)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
             ${maker} ${PROJECT_SOURCE_DIR}/scripts/public_header.py ${template})
set(NivaroMorphology_FORTRAN_MODULE ${NIVARO_INTERFACE}.f90)
execute_process(COMMAND ${Python3_EXECUTABLE} -B ${maker} ${NIVARO_HEADER} ${template}
                        ${NivaroMorphology_FORTRAN_MODULE}
                COMMAND_ERROR_IS_FATAL ANY)
