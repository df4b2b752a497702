# find_package(NivaroMorphology 1.0 CONFIG [COMPONENTS shared static]): the targets
# NivaroMorphology::shared and NivaroMorphology::static, and NivaroMorphology::NivaroMorphology, which
# is the shared library where that was asked for. Without components: all that are installed.
# NivaroMorphology::Fortran is that with the Fortran module, in projects that have enabled Fortran;
# NivaroMorphology_FORTRAN_MODULE is the module's source.
set(components ${NivaroMorphology_FIND_COMPONENTS})
if(NOT components)
  set(components shared static)
endif()

foreach(component IN LISTS components)
  set(targets_file ${CMAKE_CURRENT_LIST_DIR}/NivaroMorphology-${component}.cmake)
  if(EXISTS ${targets_file})
    include(${targets_file})
    set(NivaroMorphology_${component}_FOUND TRUE)
  elseif(NivaroMorphology_FIND_REQUIRED_${component})
    set(NivaroMorphology_FOUND FALSE)
    set(NivaroMorphology_NOT_FOUND_MESSAGE "NivaroMorphology has no component \"${component}\" here")
  endif()
endforeach()

# The library comes from MinGW; Microsoft's linker has an import library of its own.
if(WIN32 AND NOT MINGW AND TARGET NivaroMorphology::shared)
  get_target_property(configurations NivaroMorphology::shared IMPORTED_CONFIGURATIONS)
  foreach(configuration IN LISTS configurations)
    get_target_property(library NivaroMorphology::shared IMPORTED_IMPLIB_${configuration})
    string(REPLACE "libnivaro_morphology.dll.a" "nivaro_morphology.lib" library "${library}")
    set_target_properties(NivaroMorphology::shared PROPERTIES
                          IMPORTED_IMPLIB_${configuration} "${library}")
  endforeach()
endif()

get_filename_component(NivaroMorphology_FORTRAN_MODULE
                       ${CMAKE_CURRENT_LIST_DIR}/../../../include/nivaro_morphology.f90 ABSOLUTE)

if(NOT TARGET NivaroMorphology::NivaroMorphology)
  add_library(NivaroMorphology::NivaroMorphology INTERFACE IMPORTED)
  foreach(component shared static)
    if(TARGET NivaroMorphology::${component})
      set_property(TARGET NivaroMorphology::NivaroMorphology PROPERTY
                   INTERFACE_LINK_LIBRARIES NivaroMorphology::${component})
      break()
    endif()
  endforeach()
endif()
include(${CMAKE_CURRENT_LIST_DIR}/NivaroMorphologyFortran.cmake)
