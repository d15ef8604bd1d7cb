# The three Debian packages, one a component of the installation: cpack in the build directory makes
# them. Libraries and headers of both widths may be installed side by side, and the tools of one.

set(package_runtime libkorvane-gen${PROJECT_VERSION_MAJOR})
set(package_development libkorvane-gen-dev)
set(package_tools korvane-gen-tools)
set(exactly "(= ${PROJECT_VERSION})")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME korvane-gen)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The korvane gen maintainers <gen@korvane.example>")
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE amd64)
if(KORVANE_32BIT)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386)
endif()
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(about "The questions that all executables of the suite share, with one agreed
answer: where the installation, the project and a design file lie, how names
compare and numbers read, what a simulation condition means, what the time
and the machine are.

")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${about}This package holds the shared libraries.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${package_runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# Names may be added to the interface: what is built with this version may need it.
configure_file(packaging/debian/shlibs.in packaging/debian/shlibs @ONLY)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${CMAKE_CURRENT_BINARY_DIR}/packaging/debian/shlibs;${PROJECT_SOURCE_DIR}/packaging/debian/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
  "${about}This package holds headers, manual pages, CMake package and pkg-config file.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${package_development})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${package_runtime} ${exactly}")

set(CPACK_DEBIAN_TOOLS_DESCRIPTION
  "${about}This package holds gen_query, which asks them, and an example installation.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ${package_tools})
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${package_runtime} ${exactly}")
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
# The tools know the libraries by the package above, not by what dpkg finds on this machine.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/lib)

string(TIMESTAMP KORVANE_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(packaging/debian/changelog.in packaging/debian/changelog @ONLY)
execute_process(COMMAND gzip -9 --no-name --keep --force
  ${CMAKE_CURRENT_BINARY_DIR}/packaging/debian/changelog COMMAND_ERROR_IS_FATAL ANY)
foreach(component runtime development tools)
  set(package ${package_${component}})
  install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} RENAME copyright
    COMPONENT ${component})
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/packaging/debian/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
  install(FILES packaging/debian/${component}.lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${package} COMPONENT ${component}
    OPTIONAL)
endforeach()
install(DIRECTORY examples/suite
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_tools}/examples COMPONENT tools)
install(DIRECTORY examples/find_file examples/cmake_host examples/make_host
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_development}/examples COMPONENT development
  FILES_MATCHING PATTERN main.cpp PATTERN CMakeLists.txt PATTERN Makefile PATTERN build EXCLUDE)
install(FILES examples/README.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_development}/examples COMPONENT development)

# What CPack cannot say of a package yet is added when it has made it.
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/KorvaneRepack.cmake)

include(CPack)
