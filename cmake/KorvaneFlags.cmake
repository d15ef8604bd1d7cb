# One interface target, korvane_flags, carries what every target of the tree is compiled with.

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_BUILD_WITH_INSTALL_RPATH OFF)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

if(KORVANE_32BIT)
  # The width is a matter of every single command, the ones of sub-projects included. SSE2 arithmetic
  # makes doubles round as on x86-64; the two macros give large files and dates after January 2038.
  add_compile_options(-m32 -msse2 -mfpmath=sse)
  add_compile_definitions(_FILE_OFFSET_BITS=64 _TIME_BITS=64)
  add_link_options(-m32)
endif()
if(KORVANE_SANITIZE)
  add_compile_options(-fsanitize=${KORVANE_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KORVANE_SANITIZE})
endif()
if(KORVANE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(KORVANE_COVERAGE)
  add_link_options(--coverage)
endif()

add_library(korvane_flags INTERFACE)
target_compile_options(korvane_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
  -Wcast-align -Wformat=2 -Wno-format-nonliteral -Wnon-virtual-dtor -Woverloaded-virtual
  -Wdouble-promotion -Wundef
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond;-Wlogical-op>
  $<$<BOOL:${KORVANE_WERROR}>:-Werror>
  # A unique symbol pins the library that holds it: dlclose would no longer unload gen.
  $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>
  -fno-semantic-interposition)
target_include_directories(korvane_flags INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/h>)

# korvane_shared_library(<target> <output> <version script>): flags of our own shared libraries.
function(korvane_shared_library target output map)
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${output} LINK_DEPENDS ${map})
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:korvane_flags>)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/h>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/korvane>)
  target_compile_features(${target} PUBLIC cxx_std_20)
  # The types of the binary interface, which is compared with the one of before; presets have -g1.
  target_compile_options(${target} PRIVATE $<$<CONFIG:RelWithDebInfo>:-g2>)
  # Doubles are rounded after every operation, also by a compiler that may fuse two into one: answers do
  # not depend on the machine that the library was built for.
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  # Not for the programs: in the headers they include g++ sees null pointers that cannot be.
  target_compile_options(${target} PRIVATE -Wnull-dereference)
  target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
  # Two mappings instead of four, which is a sixth of the time it takes to load the library.
  target_link_options(${target} PRIVATE -Wl,-z,noseparate-code)
  if(NOT CMAKE_SKIP_INSTALL_RPATH)
    # The libraries lie side by side, here and installed. Left to itself cmake puts an empty directory
    # into what the loader searches while they are not installed, and that is the current one.
    set_target_properties(${target} PROPERTIES
      INSTALL_RPATH "$ORIGIN" BUILD_WITH_INSTALL_RPATH ON)
  endif()
  if(KORVANE_COVERAGE)
    # All names stay visible: a process that ends early writes the counts of all libraries at once.
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
  else()
    target_link_options(${target} PRIVATE -Wl,--version-script=${map})
  endif()
  if(NOT KORVANE_SANITIZE) # clang keeps the sanitizers' run time in the executable alone
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()
