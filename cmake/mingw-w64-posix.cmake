# Cross toolchain for the windows presets: mingw-w64 with POSIX threads
# (needed by std::thread users such as googletest), linked statically so the
# executables and the DLL need no mingw runtime DLLs. 64-bit unless a
# toolchain file that includes this one names another target first
# (mingw-w64-i686-posix.cmake, for 32-bit Outlook).
if(NOT QORVANE_MINGW_TARGET)
  set(QORVANE_MINGW_TARGET x86_64-w64-mingw32)
  set(CMAKE_SYSTEM_PROCESSOR x86_64)
endif()
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${QORVANE_MINGW_TARGET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QORVANE_MINGW_TARGET}-g++-posix)
set(CMAKE_RC_COMPILER ${QORVANE_MINGW_TARGET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${QORVANE_MINGW_TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
