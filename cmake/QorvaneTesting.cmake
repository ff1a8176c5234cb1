# GoogleTest for both presets. Natively the system package is used; the
# Windows preset builds the sources of the googletest package with the cross
# compiler and runs every test executable through wine (the crosscompiling
# emulator), one ctest test per executable because each wine start costs
# about a second.

if(CMAKE_CROSSCOMPILING)
  set(gtest_force_shared_crt OFF CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  set(QORVANE_GTEST_LIBS gtest gtest_main)

  # One prefix inside the build tree, created once before the tests run so
  # that parallel tests do not race to create it.
  set(QORVANE_WINEPREFIX ${CMAKE_BINARY_DIR}/wineprefix)
  add_test(NAME wine_prefix
           COMMAND ${CMAKE_COMMAND} -E env WINEPREFIX=${QORVANE_WINEPREFIX} WINEDEBUG=-all
                   "WINEDLLOVERRIDES=mscoree,mshtml=" wineboot -i)
  set_tests_properties(wine_prefix PROPERTIES FIXTURES_SETUP wine TIMEOUT 300)
else()
  find_package(GTest REQUIRED)
  set(QORVANE_GTEST_LIBS GTest::gtest GTest::gtest_main)
endif()

# qorvane_add_test(name SOURCES ... DEPS ... [SHARED_REGISTRY])
# SHARED_REGISTRY: the tests write the add-in's own keys (settings, ignore
# list, options). Natively each test process has a registry file of its own;
# under wine every process of the prefix shares one registry, so these
# executables take turns instead of clearing each other's keys mid-test.
function(qorvane_add_test name)
  cmake_parse_arguments(ARG "SHARED_REGISTRY" "" "SOURCES;DEPS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} ${QORVANE_GTEST_LIBS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  qorvane_warnings(${name})
  add_test(NAME ${name} COMMAND ${name})
  if(CMAKE_CROSSCOMPILING)
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED wine
      ENVIRONMENT "WINEPREFIX=${QORVANE_WINEPREFIX};WINEDEBUG=-all;WINEDLLOVERRIDES=mscoree,mshtml=")
    if(ARG_SHARED_REGISTRY)
      set_tests_properties(${name} PROPERTIES RESOURCE_LOCK wine_registry)
    endif()
  endif()
endfunction()
