# Compiler settings that every target of the project shares.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Where several sources are compiled as one, they warn of each other's helpers: warnings are told by the other presets,
# and are errors there with the compiler that the code is kept clean for; another one may have opinions of its own.
if(CMAKE_UNITY_BUILD)
  add_compile_options(-w)
else()
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wconversion
                      -Wno-sign-conversion)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Werror)
  endif()
endif()

if(ORIBUND_SANITIZE)
  add_compile_options(-fsanitize=${ORIBUND_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=${ORIBUND_SANITIZE})
endif()
if(ORIBUND_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Results are shared between presets and checkouts: no path of this one goes into what the cache compares.
find_program(ORIBUND_CCACHE ccache)
if(ORIBUND_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros ${ORIBUND_CCACHE})
endif()
