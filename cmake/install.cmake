# What `cmake --install` and `cpack` put where. Two components: runtime, what a finished host needs,
# and development, what building one needs.

# Debian's linker, find_package and pkg-config look into the folder of the processor under any prefix;
# -DCMAKE_INSTALL_LIBDIR=lib asks for the plain one.
if(CMAKE_LIBRARY_ARCHITECTURE AND EXISTS /etc/debian_version)
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Folder of the libraries")
endif()
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(package_folder lib/cmake/NivaroMorphology)

install(TARGETS nivaro_morphology EXPORT shared_targets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(EXPORT shared_targets DESTINATION ${package_folder} COMPONENT development
        NAMESPACE NivaroMorphology:: FILE NivaroMorphology-shared.cmake)
if(NIVARO_STATIC_LIBRARY)
  install(TARGETS nivaro_morphology_static EXPORT static_targets
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  install(EXPORT static_targets DESTINATION ${package_folder} COMPONENT development
          NAMESPACE NivaroMorphology:: FILE NivaroMorphology-static.cmake)
endif()

# The declarations: the C header, and for Fortran hosts a module source that they compile themselves,
# since compiled modules differ from compiler to compiler.
install(FILES ${NIVARO_HEADER} ${NivaroMorphology_FORTRAN_MODULE} DESTINATION include
        COMPONENT development)

# For other compilers of Windows: the import library of Microsoft's, and the list to make others from.
if(WIN32)
  install(FILES ${NIVARO_INTERFACE}.def DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  if(TARGET microsoft_import_library)
    install(FILES ${PROJECT_BINARY_DIR}/nivaro_morphology.lib DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT development)
  endif()
endif()

write_basic_package_version_file(${PROJECT_BINARY_DIR}/NivaroMorphologyConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES cmake/NivaroMorphologyConfig.cmake
              cmake/NivaroMorphologyFortran.cmake
              ${PROJECT_BINARY_DIR}/NivaroMorphologyConfigVersion.cmake
        DESTINATION ${package_folder} COMPONENT development)

# pkg-config finds the prefix from where its file lies, so that the tree may move.
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/nivaro_morphology.pc.in nivaro_morphology.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/nivaro_morphology.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
