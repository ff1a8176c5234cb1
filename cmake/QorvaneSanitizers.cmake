# The clang build that looks for memory and undefined-behaviour faults (preset
# asan).
#
# QORVANE_SANITIZE: everything, tests included, compiled and linked with
# AddressSanitizer and UndefinedBehaviorSanitizer. Undefined behaviour aborts
# instead of printing and carrying on, so a test that meets it fails.
#
# QORVANE_BUILD_FUZZERS: the libFuzzer targets of fuzz/, with the same
# sanitizers. Only they and the libraries they link get libFuzzer's coverage
# instrumentation (fuzz/CMakeLists.txt); the tests stay as they are.

set(QORVANE_SANITIZER_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)

if(QORVANE_SANITIZE OR QORVANE_BUILD_FUZZERS)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "The sanitizer and fuzzer builds need clang (CMAKE_CXX_COMPILER=clang++)")
  endif()
  add_compile_options(${QORVANE_SANITIZER_FLAGS})
  add_link_options(${QORVANE_SANITIZER_FLAGS})
endif()
