# Fails unless the add-in DLL is of the expected bitness (the client loads
# only its own), exports exactly the four functions COM and regsvr32 look
# up, by their plain names, and imports only system DLLs.
# Run with -DOBJDUMP=<objdump> -DFILE=<dll> -DPOINTER_SIZE=<4|8> -P CheckDll.cmake.
cmake_minimum_required(VERSION 3.25)
set(expected DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer)
execute_process(COMMAND ${OBJDUMP} -p ${FILE} OUTPUT_VARIABLE dump RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "${OBJDUMP} cannot read ${FILE}")
endif()
# PE32 (magic 010b) for 32-bit, PE32+ (020b) for 64-bit.
if(POINTER_SIZE EQUAL 4)
  set(magic 010b)
else()
  set(magic 020b)
endif()
if(NOT dump MATCHES "Magic[ \t]+${magic}")
  message(FATAL_ERROR "${FILE} is not a ${POINTER_SIZE}-byte-pointer DLL (PE magic ${magic} expected)")
endif()
# The export table lists "[   n] +base[   m] NAME" lines after its header.
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table[^\n]*\n(([ \t]*\\[[^\n]*\n)*)" table "${dump}")
string(REGEX MATCHALL "\\][ \t]+[A-Za-z_@0-9]+[\r\n]" lines "${CMAKE_MATCH_1}")
set(exports)
foreach(line IN LISTS lines)
  string(REGEX REPLACE "\\][ \t]+([A-Za-z_@0-9]+)[\r\n]" "\\1" name "${line}")
  list(APPEND exports ${name})
endforeach()
list(SORT exports)
if(NOT exports STREQUAL expected)
  message(FATAL_ERROR "${FILE} exports [${exports}], expected [${expected}]")
endif()
message(STATUS "${FILE}: exports ${exports}")
set(FILES ${FILE})
include(${CMAKE_CURRENT_LIST_DIR}/CheckSystemImports.cmake)
