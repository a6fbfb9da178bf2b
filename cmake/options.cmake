# The language, the warnings and the sanitizers, the same for every target of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

find_program(CCACHE ccache)
if(CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  # With these it knows how to keep what was compiled with a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
  else()
    add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
  endif()
endif()

set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
set(warnings
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi -Wcast-align -Wcast-qual -Wformat=2
  -Wimplicit-fallthrough -Wduplicated-cond -Wlogical-op -Wvla)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang") # which does not know all of them
  list(APPEND warnings -Wno-unknown-warning-option -Wno-missing-field-initializers)
  add_link_options(-fuse-ld=lld-14)
endif()
add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:${warnings}>")

if(VELLUMO_SANITIZE OR VELLUMO_FUZZ)
  add_compile_options(-fno-omit-frame-pointer -fsanitize=address,undefined -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  # For long tests. Where an allocation came from is asked of a failure, which can be played again, so its stack need not
  # be kept for each.
  set(VELLUMO_LEAN_SANITIZERS
    "ASAN_OPTIONS=malloc_context_size=1:quarantine_size_mb=4:thread_local_quarantine_size_kb=64")
endif()

if(VELLUMO_FUZZ)
  # Every branch taken is told to libFuzzer. What is optimised a little runs several times as often.
  add_compile_options(-O2 -gline-tables-only -fsanitize=fuzzer-no-link)
endif()

if(WIN32)
  # Function and line of each address, and nothing more: enough for a crash report. No folder of this machine in it.
  add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:-g1;-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=;-fstack-protector-strong>")
  add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601 WINVER=0x0601)
endif()
