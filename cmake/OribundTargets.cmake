# The few kinds of target that the project has.

# oribund_folder(NAME SOURCES a.cpp ... DEPENDS base ...)
#   One folder of the library: the static library oribund_NAME, whose objects also go into liboribund.so.
#   DEPENDS names other folders and is where the direction of the include arrows is written down.
function(oribund_folder name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(oribund_${name} STATIC ${arg_SOURCES})
  target_include_directories(oribund_${name} PUBLIC ${PROJECT_SOURCE_DIR})
  # Nobody replaces functions of the library at load time, so its own calls may be direct and inlined.
  target_compile_options(oribund_${name} PRIVATE -fno-semantic-interposition)
  foreach(folder IN LISTS arg_DEPENDS)
    target_link_libraries(oribund_${name} PUBLIC oribund_${folder})
  endforeach()
  set_property(GLOBAL APPEND PROPERTY ORIBUND_FOLDERS oribund_${name})
endfunction()

# workbench_folder(NAME SOURCES a.cpp ... LINK libraries ...)
#   One folder of the workbench, as the static library workbench_NAME.
function(workbench_folder name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(workbench_${name} STATIC ${arg_SOURCES})
  target_include_directories(workbench_${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(workbench_${name} PUBLIC ${arg_LINK})
endfunction()

# oribund_plugin(NAME FOLDER SOURCES a.cpp ...)
#   A plug-in that other programs load as well, as FOLDER/NAME.so: those have no sanitizer of ours.
function(oribund_plugin name folder)
  cmake_parse_arguments(arg "" "" "SOURCES" ${ARGN})
  add_library(${name} MODULE ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_compile_options(${name} PRIVATE -fno-sanitize=all)
  target_link_options(${name} PRIVATE -fno-sanitize=all)
  set_target_properties(${name} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${folder})
endfunction()

# oribund_test(NAME SOURCES a.cpp ... LINK libraries ... [LABELS label ...])
#   A GoogleTest program test_NAME, run whole as one ctest entry. Three labels mean something to ./test:
#   `threads`: it starts threads, so it is also built (as part of threaded_tests) and run under the thread sanitizer;
#   `media`: it loads MLT's modules, which leak and are gone when leaks are reported, so no leaks are looked for;
#   `nosan`: it is not run under the address sanitizer (say what for where you set it).
function(oribund_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK;LABELS" ${ARGN})
  add_executable(test_${name} ${arg_SOURCES})
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(test_${name} PRIVATE ${arg_LINK} GTest::gmock GTest::gtest_main)
  add_test(NAME ${name} COMMAND test_${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300)
  if(arg_LABELS)
    set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}")
  endif()
  if("threads" IN_LIST arg_LABELS)
    add_dependencies(threaded_tests test_${name})
  endif()
  if("media" IN_LIST arg_LABELS)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT ASAN_OPTIONS=detect_leaks=0)
  endif()
endfunction()

# oribund_bench(NAME SOURCES a.cpp ... LINK libraries ...): a Google Benchmark program bench_NAME.
function(oribund_bench name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(bench_${name} ${arg_SOURCES})
  target_include_directories(bench_${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(bench_${name} PRIVATE ${arg_LINK} benchmark::benchmark_main)
  add_dependencies(benchmarks bench_${name})
endfunction()

# oribund_fuzz(NAME SOURCES a.cpp ... LINK libraries ...)
#   A libFuzzer program fuzz_NAME. The files in corpus/NAME beside its CMakeLists.txt are where it starts from.
function(oribund_fuzz name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(fuzz_${name} ${arg_SOURCES})
  target_include_directories(fuzz_${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(fuzz_${name} PRIVATE ${arg_LINK})
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  set_target_properties(fuzz_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzz)
  add_dependencies(fuzzers fuzz_${name})
endfunction()
