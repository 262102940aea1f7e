# Compiler settings that hold for every target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

find_program(QOR_CCACHE ccache)
if(QOR_CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER "${QOR_CCACHE}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${QOR_CCACHE}")
endif()

# The signal path is reproducible bit for bit: every operation is rounded on its own, nothing is fused.
add_compile_options(-ffp-contract=off)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
  $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual> -Wcast-align)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees an overlapping copy in every inlined std::string concatenation with a literal in front.
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
option(QOR_WERROR "Warnings are errors" OFF)
if(QOR_WERROR)
  add_compile_options(-Werror)
endif()

set(QOR_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")
if(QOR_SANITIZE)
  add_compile_options("-fsanitize=${QOR_SANITIZE}" -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options("-fsanitize=${QOR_SANITIZE}")
endif()

option(QOR_FUZZ "Build the libFuzzer targets (needs clang)" OFF)
if(QOR_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link) # coverage of the libraries guides the fuzzer
endif()
