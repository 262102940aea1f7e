# Targets of the project. A library's headers are reached by their path below src/ ("platform/core/Log.h"), through
# a link made in the build tree for that library alone: only what links the library can include its headers.

# qor_add_library(NAME PATH folder-below-src [SOURCES ...] [LINK public...] [PRIVATE_LINK ...])
function(qor_add_library name)
  cmake_parse_arguments(ARG "" "PATH" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
  set(root "${CMAKE_BINARY_DIR}/include/${name}")
  get_filename_component(parent "${ARG_PATH}" DIRECTORY)
  file(MAKE_DIRECTORY "${root}/${parent}")
  file(CREATE_LINK "${CMAKE_SOURCE_DIR}/src/${ARG_PATH}" "${root}/${ARG_PATH}" SYMBOLIC)
  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC "${root}")
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE ${ARG_PRIVATE_LINK})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE "${root}")
    target_link_libraries(${name} INTERFACE ${ARG_LINK})
  endif()
endfunction()

# qor_add_test(NAME SOURCES ... LINK ...): one GoogleTest program; each test is a ctest entry of its own.
function(qor_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINK} test_support GTest::gmock GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST)
endfunction()

# qor_add_bench(NAME SOURCES ... LINK ...): one Google Benchmark program.
function(qor_add_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINK} benchmark::benchmark_main)
endfunction()
