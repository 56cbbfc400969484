cmake_minimum_required(VERSION 3.25)

# Configures SOURCE as a stranger to this build would, builds it in BUILD against the library in PREFIX, runs it with ARGUMENTS, and
# compares what it prints with the file EXPECTED, in which @VERSION@ stands for the library's version.
file(REMOVE_RECURSE ${BUILD})
execute_process(COMMAND ${CMAKE_COMMAND} -G ${GENERATOR} -S ${SOURCE} -B ${BUILD} -DCMAKE_PREFIX_PATH=${PREFIX}
                        -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Werror"
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} COMMAND_ERROR_IS_FATAL ANY)

get_filename_component(program ${SOURCE} NAME)
execute_process(COMMAND ${BUILD}/${program} ${ARGUMENTS} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
file(READ ${EXPECTED} expected)
string(REPLACE "@VERSION@" "${VERSION}" expected "${expected}")
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "expected:\n${expected}\nprinted:\n${printed}")
endif()
