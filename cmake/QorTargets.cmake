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

# qor_add_plugin(NAME SOURCES ... LINK ... EXPORT symbols... OUTPUT_DIRECTORY dir [SUFFIX .so]): a loadable object that
# exports its entry symbols and nothing else, and needs nothing that is not used.
function(qor_add_plugin name)
  cmake_parse_arguments(ARG "" "OUTPUT_DIRECTORY;SUFFIX" "SOURCES;LINK;EXPORT" ${ARGN})
  add_library(${name} MODULE ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINK})
  set(map "${CMAKE_CURRENT_BINARY_DIR}/${name}.map")
  list(JOIN ARG_EXPORT "; " symbols)
  file(CONFIGURE OUTPUT "${map}" CONTENT "{ global: ${symbols}; local: *; };\n") # written only if it changes
  target_link_options(${name} PRIVATE "LINKER:--version-script,${map}" "LINKER:--as-needed" "LINKER:--gc-sections")
  if(NOT QOR_SANITIZE)
    target_link_options(${name} PRIVATE "LINKER:--no-undefined")
  endif()
  set_target_properties(${name} PROPERTIES PREFIX "" LINK_DEPENDS "${map}"
    LIBRARY_OUTPUT_DIRECTORY "${ARG_OUTPUT_DIRECTORY}")
  if(ARG_SUFFIX)
    set_target_properties(${name} PROPERTIES SUFFIX "${ARG_SUFFIX}")
  endif()
endfunction()
