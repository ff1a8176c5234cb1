# Shared target conventions: every library is compiled with the same warnings,
# sees the source root as its include root, and picks its platform half by
# file name (foo_win.cpp on Windows, foo_posix.cpp elsewhere).

if(WIN32)
  set(QORVANE_PLATFORM_SUFFIX win)
else()
  set(QORVANE_PLATFORM_SUFFIX posix)
endif()

function(qorvane_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wno-unused-parameter)
  # GCC 12 reports impossible overlaps in std::string concatenation at -O2
  # (a known false positive of its -Wrestrict); it hides real warnings.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
endfunction()

# qorvane_add_library(name SOURCES ... [PLATFORM_SOURCES stem ...] [DEPS ...] [SYSTEM_LIBS ...])
# PLATFORM_SOURCES names stems: "locale" adds locale_win.cpp or locale_posix.cpp.
function(qorvane_add_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;PLATFORM_SOURCES;DEPS;SYSTEM_LIBS" ${ARGN})
  set(sources ${ARG_SOURCES})
  foreach(stem IN LISTS ARG_PLATFORM_SOURCES)
    list(APPEND sources ${stem}_${QORVANE_PLATFORM_SUFFIX}.cpp)
  endforeach()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_DEPS} ${ARG_SYSTEM_LIBS})
  qorvane_warnings(${name})
endfunction()
