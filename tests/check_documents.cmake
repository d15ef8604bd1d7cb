# Documents, examples, manual pages and completions, held against what gen_query does.

# What the documents show is what gen_query prints.
if(KORVANE_HOST)
  add_test(NAME Docs.ExamplesPrintWhatTheyShow
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/docs/examples.py
            $<TARGET_FILE:gen_query>
            ${PROJECT_SOURCE_DIR}/examples/suite
            ${PROJECT_SOURCE_DIR}/README.md
            ${PROJECT_SOURCE_DIR}/docs/condition-language.md
            ${PROJECT_SOURCE_DIR}/docs/editing.md
            ${PROJECT_SOURCE_DIR}/docs/lookup-order.md
            ${PROJECT_SOURCE_DIR}/docs/scripts.md)
endif()

# The subcommand that CONTRIBUTING.md shows compiles as it is printed there, and answers as it says.
if(KORVANE_HOST)
  set(contributing ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md)
  add_custom_command(OUTPUT greet.cpp
    COMMAND sed -n [[/^```cpp/,/^```$/{/^```/!p}]] ${contributing} > greet.cpp
    DEPENDS ${contributing} VERBATIM)
  add_executable(greet_host docs/greet_host.cpp ${CMAKE_CURRENT_BINARY_DIR}/greet.cpp)
  target_link_libraries(greet_host PRIVATE korvane_flags gen_query_commands)
  add_test(NAME Docs.TheSubcommandOfContributingAnswers
    COMMAND sh -c "$<TARGET_FILE:greet_host> greet --help | grep -Fx '  hello you!' && test \"$($<TARGET_FILE:greet_host> greet you --loudly)\" = 'hello you!'")
endif()

# The picture of the benchmarks is of the figures beside it.
add_test(NAME Docs.PictureShowsTheFiguresBesideIt
  COMMAND sh -c "'${Python3_EXECUTABLE}' bench/picture.py docs/performance.md | cmp - docs/performance.svg"
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})

# Real tools take the HDL files of the examples.
add_test(NAME Examples.RealToolsReadEveryHdlFile
  COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/hdl/hdl.py ${PROJECT_SOURCE_DIR}/examples/suite)
set_tests_properties(Examples.RealToolsReadEveryHdlFile PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT 120)

# Simulators take the lists of files that gen_query writes.
if(KORVANE_HOST)
  add_test(NAME FileLists.SimulatorsTakeWhatIsWritten
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/filelist/filelist.py
            $<TARGET_FILE:gen_query> ${PROJECT_SOURCE_DIR}/examples/suite)
  set_tests_properties(FileLists.SimulatorsTakeWhatIsWritten PROPERTIES TIMEOUT 120 SKIP_RETURN_CODE 77)
endif()

# The shells complete what --help lists. (It is asked of the generated files, which lie beside the build.)
if(KORVANE_HOST AND NOT KORVANE_SANITIZE AND NOT KORVANE_COVERAGE)
  add_test(NAME Completion.ShellsOfferWhatHelpLists
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/completion/completion.py
            ${CMAKE_BINARY_DIR}/packaging/bash/gen_query ${CMAKE_BINARY_DIR}/packaging/zsh/_gen_query
            ${CMAKE_BINARY_DIR}/packaging/fish/gen_query.fish)
  set(tcl_packages "")
  if(KORVANE_BINDINGS)
    set(tcl_packages ${CMAKE_BINARY_DIR}/tcl)
  endif()
  add_test(NAME Manual.PagesAreCleanAndListEverySubcommand
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/manual/pages.py
            ${CMAKE_BINARY_DIR}/packaging ${PROJECT_SOURCE_DIR}/h $<TARGET_FILE:gen_query>
            ${PROJECT_SOURCE_DIR}/examples/suite ${PROJECT_SOURCE_DIR}/bindings/tcl/korvane_gen.3tcl
            ${tcl_packages})
endif()
