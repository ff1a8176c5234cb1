# Runs qorvane_bench briefly in each output format: json must be the library's
# JSON alone on stdout (it parses, and nothing of ours is mixed in), the
# console format must close with the ratio table. The exit code may be 0 or
# 3 (a run this short may miss the speed target); anything else fails.
#
#   cmake -DBENCH=<qorvane_bench> -P check_output_formats.cmake
cmake_minimum_required(VERSION 3.25)

set(brief --benchmark_filter=BM_Occurrences_.*/daily_every_3_days --benchmark_min_time=0.01)

execute_process(COMMAND ${BENCH} ${brief} --benchmark_format=json
                OUTPUT_VARIABLE json ERROR_VARIABLE json_err RESULT_VARIABLE code)
if(NOT code MATCHES "^(0|3)$")
  message(FATAL_ERROR "json run exited ${code}: ${json_err}")
endif()
string(JSON first_name ERROR_VARIABLE parse_error GET "${json}" benchmarks 0 name)
if(parse_error)
  message(FATAL_ERROR "stdout is not the library's JSON (${parse_error}):\n${json}")
endif()
string(JSON count LENGTH "${json}" benchmarks)
if(NOT count EQUAL 2 OR NOT first_name MATCHES "^BM_Occurrences_(Qorvane|Libical)/daily_every_3_days$")
  message(FATAL_ERROR "unexpected benchmarks in the JSON: ${count}, first ${first_name}")
endif()
if(json MATCHES "ns per 1000-listing")
  message(FATAL_ERROR "the ratio table is mixed into the JSON")
endif()

execute_process(COMMAND ${BENCH} ${brief} OUTPUT_VARIABLE console RESULT_VARIABLE code)
if(NOT code MATCHES "^(0|3)$" OR NOT console MATCHES "case \\(ns per 1000-listing\\)[^\n]*\ndaily_every_3_days ")
  message(FATAL_ERROR "console run exited ${code} without the ratio table:\n${console}")
endif()
message("qorvane_bench: json and console output as expected")
