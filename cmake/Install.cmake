# Installs the library, its headers, and the files by which pkg-config and CMake find them. The
# stand-ins, where they are built, are a component of their own.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kriolilglu)

install(TARGETS kriolilglu EXPORT kriolilgluTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kriolilglu COMPONENT development
  FILE_SET name_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kriolilglu COMPONENT development)
install(EXPORT kriolilgluTargets NAMESPACE kriolilglu::
  DESTINATION ${package_dir} COMPONENT development)

# Both files locate the installation relative to themselves, so that it is relocatable.
configure_package_config_file(cmake/kriolilgluConfig.cmake.in kriolilgluConfig.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(kriolilgluConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/kriolilgluConfig.cmake
  ${PROJECT_BINARY_DIR}/kriolilgluConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT development)

if(KRIOLILGLU_PLATFORM STREQUAL "stand-in")
  install(TARGETS ${platform_libraries} EXPORT kriolilgluTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT platform
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT platform)
  set_target_properties(kriolilglu PROPERTIES INSTALL_RPATH $ORIGIN)
  set(platform_cflags "-I\${includedir}")
  set(platform_libs "-lkylog -lkycomp")
else()
  install(FILES cmake/FindKyPlatform.cmake DESTINATION ${package_dir} COMPONENT development)
  foreach(library IN ITEMS kylog kycomp) # omits the compiler's default folders
    if(NOT ${library}_INCLUDE_DIR IN_LIST CMAKE_C_IMPLICIT_INCLUDE_DIRECTORIES)
      list(APPEND platform_cflags -I${${library}_INCLUDE_DIR})
    endif()
    cmake_path(GET ${library}_LIBRARY PARENT_PATH libdir)
    if(NOT libdir IN_LIST CMAKE_C_IMPLICIT_LINK_DIRECTORIES)
      list(APPEND platform_libs -L${libdir})
    endif()
    list(APPEND platform_libs -l${library})
  endforeach()
  foreach(flags IN ITEMS platform_cflags platform_libs)
    list(REMOVE_DUPLICATES ${flags})
    list(JOIN ${flags} " " ${flags})
  endforeach()
endif()

install(FILES CHANGELOG.md docs/conventions.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(FILES examples/iptv.c examples/switch-up.txt
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT development)

if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR} OR
   CMAKE_INSTALL_PREFIX STREQUAL "/usr") # which is not moved
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
    BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig OUTPUT_VARIABLE pc_prefix)
  set(pc_prefix "\${pcfiledir}/${pc_prefix}")
endif()
cmake_path(APPEND pc_libdir "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND pc_includedir "\${prefix}" ${CMAKE_INSTALL_INCLUDEDIR})
configure_file(cmake/kriolilglu.pc.in kriolilglu.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kriolilglu.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
