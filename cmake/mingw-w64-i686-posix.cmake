# Cross toolchain for the windows-x86 preset: the 32-bit add-in DLL, for
# 32-bit Outlook. Built and checked, not run: Debian's wine here runs 64-bit
# programs only.
set(QORVANE_MINGW_TARGET i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-posix.cmake)
