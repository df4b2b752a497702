# The target NivaroMorphology::Fortran, where Fortran is among the project's languages: the module,
# compiled by the project's own compiler once for all its programs, and the library.
# NivaroMorphology_FORTRAN_MODULE names its source.
get_property(languages GLOBAL PROPERTY ENABLED_LANGUAGES)
if(NOT Fortran IN_LIST languages OR TARGET NivaroMorphology::Fortran
   OR NOT EXISTS "${NivaroMorphology_FORTRAN_MODULE}")
  return()
endif()
set(module_folder ${CMAKE_CURRENT_BINARY_DIR}/nivaro_morphology_fortran)
add_library(nivaro_morphology_fortran STATIC EXCLUDE_FROM_ALL ${NivaroMorphology_FORTRAN_MODULE})
add_library(NivaroMorphology::Fortran ALIAS nivaro_morphology_fortran)
set_target_properties(nivaro_morphology_fortran PROPERTIES
  Fortran_MODULE_DIRECTORY ${module_folder}
  POSITION_INDEPENDENT_CODE ON)
target_include_directories(nivaro_morphology_fortran INTERFACE ${module_folder})
target_link_libraries(nivaro_morphology_fortran PUBLIC NivaroMorphology::NivaroMorphology)
