# The static library: one object that holds all floors and shows the same names as the shared one.
#
# An archive of the floors' objects would show every function of every floor, and the hidden
# visibility that keeps them inside a shared library does not count between the objects of one link.
# A host with a function of the same name would get ours, or the other way round; worse, the linker
# keeps one of several equal inline functions, and the one compiled for AVX-512 could replace the
# host's. So the objects are joined first, then all names but the exported ones are made local.
# Inline functions stand in groups that the linker drops by name, local or not: the groups are
# dissolved while joining.
add_executable(joined_floors)
target_link_libraries(joined_floors PRIVATE export_skin)
target_link_options(joined_floors PRIVATE -r -nostdlib -Wl,--force-group-allocation)

# The runtime of gfortran asks for threads by weak names, which take nothing from an archive. In a
# program linked all static it finds those that the C++ library brought along, believes to have all,
# and jumps to address 0 where it locks a file. Named here, they come with the library.
set(thread_names mutex_init mutex_trylock mutex_destroy cond_init cond_wait cond_broadcast
                 cond_destroy create join)
list(TRANSFORM thread_names PREPEND "LINKER:-u,pthread_")
target_link_options(joined_floors PRIVATE ${thread_names})
set_target_properties(joined_floors PROPERTIES SUFFIX .o LINKER_LANGUAGE CXX)

set(one_object ${CMAKE_CURRENT_BINARY_DIR}/nivaro_morphology.o)
add_custom_command(
  OUTPUT ${one_object}
  COMMAND ${CMAKE_OBJCOPY} --keep-global-symbols=${NIVARO_INTERFACE}.txt $<TARGET_FILE:joined_floors>
          ${one_object}
  DEPENDS joined_floors ${NIVARO_INTERFACE}.txt
  WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
  VERBATIM)
set_source_files_properties(${one_object} PROPERTIES EXTERNAL_OBJECT TRUE GENERATED TRUE)

add_library(nivaro_morphology_static STATIC ${one_object})
add_library(NivaroMorphology::static ALIAS nivaro_morphology_static)
set_target_properties(nivaro_morphology_static PROPERTIES
  EXPORT_NAME static
  OUTPUT_NAME nivaro_morphology
  LINKER_LANGUAGE CXX
  ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
target_include_directories(nivaro_morphology_static INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:include>)
# By name, so that a host in C or Fortran needs no C++ compiler, only its library.
target_link_libraries(nivaro_morphology_static INTERFACE stdc++ m pthread)
