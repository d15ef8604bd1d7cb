# What `cmake --install` gives: headers in include/korvane, the libraries, a CMake package
# (find_package(korvane_gen), targets korvane::gen and korvane::gen_c) and pkg-config files. The tree may be moved.

include(CMakePackageConfigHelpers)

set(KORVANE_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/korvane_gen)
set(KORVANE_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set_target_properties(korvane_sibling PROPERTIES EXPORT_NAME sibling)
install(TARGETS korvane_gen korvane_gen_c korvane_sibling EXPORT korvane_gen
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY h/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/korvane
  FILES_MATCHING PATTERN *.h)

install(EXPORT korvane_gen NAMESPACE korvane:: FILE korvane_gen-config.cmake
  DESTINATION ${KORVANE_PACKAGE_DIR})
# Also refuses a package of the other width.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/korvane_gen-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/korvane_gen-config-version.cmake
  DESTINATION ${KORVANE_PACKAGE_DIR})

# The prefix as seen from where the pkg-config file lies.
cmake_path(SET KORVANE_PREFIX_FROM_PKGCONFIG ${CMAKE_INSTALL_PREFIX})
cmake_path(RELATIVE_PATH KORVANE_PREFIX_FROM_PKGCONFIG
  BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
configure_file(cmake/korvane_gen.pc.in korvane_gen.pc @ONLY)
configure_file(cmake/korvane_gen_c.pc.in korvane_gen_c.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/korvane_gen.pc ${CMAKE_CURRENT_BINARY_DIR}/korvane_gen_c.pc
  DESTINATION ${KORVANE_PKGCONFIG_DIR})
