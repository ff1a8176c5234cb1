# Reads every #include of the source tree and fails on an edge that the table
# of allowed folder dependencies does not list, naming the file and the edge.
#
#   cmake -DSOURCE_DIR=<tree> -DTABLE=<folder_dependencies.txt> -P check_includes.cmake
#
# The table's format is described at its top. Build folders (build*) and
# hidden folders are not read.
cmake_minimum_required(VERSION 3.25)

if(NOT SOURCE_DIR OR NOT TABLE)
  message(FATAL_ERROR "usage: cmake -DSOURCE_DIR=<tree> -DTABLE=<table> -P check_includes.cmake")
endif()

# The C and C++ standard library headers: every folder may use them. Any other
# header in angle brackets that is not one of ours counts as <system>.
set(standard_headers
  algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
  cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp
  csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception
  execution filesystem format forward_list fstream functional future initializer_list iomanip ios iosfwd
  iostream istream iterator latch limits list locale map memory memory_resource mutex new numbers numeric
  optional ostream queue random ranges ratio regex scoped_allocator semaphore set shared_mutex
  source_location span sstream stack stdexcept stop_token streambuf string string_view syncstream
  system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
  variant vector version
  assert.h ctype.h errno.h fenv.h float.h inttypes.h iso646.h limits.h locale.h math.h setjmp.h signal.h
  stdarg.h stddef.h stdint.h stdio.h stdlib.h string.h time.h uchar.h wchar.h wctype.h)

# --- the table ---------------------------------------------------------------
# rows_<n>: FROM pattern as a regex over the file path, its length, its targets.
file(STRINGS "${TABLE}" table_lines)
set(row_count 0)
set(folders "")
foreach(line IN LISTS table_lines)
  string(REGEX REPLACE "#.*" "" line "${line}")
  string(STRIP "${line}" line)
  if(line STREQUAL "")
    continue()
  endif()
  if(NOT line MATCHES "^([^: ]+):(.*)$")
    message(FATAL_ERROR "${TABLE}: cannot read the row '${line}'")
  endif()
  set(from "${CMAKE_MATCH_1}")
  string(STRIP "${CMAKE_MATCH_2}" targets)
  separate_arguments(targets UNIX_COMMAND "${targets}")
  if(from MATCHES "/")
    string(REGEX REPLACE "([.+?^$()])" "\\\\\\1" regex "${from}")
    string(REPLACE "*" "[^/]*" regex "${regex}")
    set(regex "^${regex}$")
  else()
    list(APPEND folders "${from}")
    set(regex "^${from}/")
  endif()
  string(LENGTH "${from}" length)
  set(row_${row_count}_regex "${regex}")
  set(row_${row_count}_length ${length})
  set(row_${row_count}_from "${from}")
  set(row_${row_count}_targets "${targets}")
  math(EXPR row_count "${row_count} + 1")
endforeach()

# --- the files ---------------------------------------------------------------
file(GLOB_RECURSE sources RELATIVE "${SOURCE_DIR}" LIST_DIRECTORIES false
     "${SOURCE_DIR}/*.h" "${SOURCE_DIR}/*.hpp" "${SOURCE_DIR}/*.c" "${SOURCE_DIR}/*.cc" "${SOURCE_DIR}/*.cpp"
     "${SOURCE_DIR}/*.inl")
list(FILTER sources EXCLUDE REGEX "^(build[^/]*|\\.[^/]*)/")
list(SORT sources)

set(violations "")
set(edge_count 0)
foreach(path IN LISTS sources)
  if(NOT path MATCHES "/")
    list(APPEND violations "${path}: a source file outside every folder")
    continue()
  endif()
  string(REGEX REPLACE "/.*" "" own_folder "${path}")
  string(REGEX REPLACE "/[^/]*$" "" own_dir "${path}")

  # The row of the longest matching pattern.
  set(best -1)
  set(best_length -1)
  math(EXPR last_row "${row_count} - 1")
  foreach(i RANGE ${last_row})
    if(path MATCHES "${row_${i}_regex}" AND row_${i}_length GREATER best_length)
      set(best ${i})
      set(best_length ${row_${i}_length})
    endif()
  endforeach()
  if(best EQUAL -1)
    list(APPEND violations "${path}: the folder '${own_folder}' has no row in the table")
    continue()
  endif()
  set(allowed "${row_${best}_targets}")

  file(STRINGS "${SOURCE_DIR}/${path}" includes REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"]")
  foreach(include IN LISTS includes)
    if(NOT include MATCHES "include[ \t]*([<\"])([^>\"]+)[>\"]")
      continue()
    endif()
    set(bracket "${CMAKE_MATCH_1}")
    set(header "${CMAKE_MATCH_2}")
    math(EXPR edge_count "${edge_count} + 1")
    if(bracket STREQUAL "<")
      set(shown "<${header}>")
    else()
      set(shown "\"${header}\"")
    endif()

    # What the include reaches: a folder of ours (with the path inside it),
    # the standard library, or the system.
    string(REGEX REPLACE "/.*" "" first "${header}")
    if(header MATCHES "/" AND first IN_LIST folders)
      set(target_folder "${first}")
    elseif(NOT header MATCHES "/" AND bracket STREQUAL "\"" AND EXISTS "${SOURCE_DIR}/${own_dir}/${header}")
      continue()  # next to the including file
    elseif(bracket STREQUAL "<" AND header IN_LIST standard_headers)
      continue()
    elseif(bracket STREQUAL "<")
      set(target_folder "<system>")
    else()
      list(APPEND violations "${path}: includes ${shown}, which is not a path from the source root")
      continue()
    endif()
    if(target_folder STREQUAL own_folder)
      continue()
    endif()

    set(ok FALSE)
    foreach(target IN LISTS allowed)
      if(target STREQUAL "<system>")
        if(target_folder STREQUAL "<system>")
          set(ok TRUE)
        endif()
      elseif(target STREQUAL "*")
        if(NOT target_folder STREQUAL "<system>")
          set(ok TRUE)
        endif()
      elseif(target MATCHES "/")
        string(FIND "${header}" "${target}" at)
        if(at EQUAL 0 AND (target MATCHES "/$" OR header STREQUAL target))
          set(ok TRUE)
        endif()
      elseif(target STREQUAL target_folder)
        set(ok TRUE)
      endif()
    endforeach()
    if(NOT ok)
      list(APPEND violations
           "${path}: includes ${shown}: ${own_folder} -> ${target_folder} is not allowed (row '${row_${best}_from}')")
    endif()
  endforeach()
endforeach()

list(LENGTH sources file_count)
if(violations)
  list(LENGTH violations violation_count)
  foreach(violation IN LISTS violations)
    message("${violation}")
  endforeach()
  message(FATAL_ERROR "${violation_count} include(s) break the folder dependencies of ${TABLE}")
endif()
message("include boundaries: ${edge_count} includes of ${file_count} files follow ${TABLE}")
