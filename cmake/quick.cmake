# What only we run need not be fast, it must be there soon: such targets are compiled without optimisation and with a
# precompiled header of the standard library's headers that most files include. A build from nothing takes less than
# half the time. The header holds nothing of the project or of a platform, so a file still compiles only when its room
# may include what it includes; `tools/lint` reads each file without it. Optimised targets do without: g++ 12 then
# forgets which headers are the system's and warns of its own library.

set(VELLUMO_PRECOMPILED
  <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <string> <string_view> <utility> <vector>)

# What is the same for all of them, so that they can share the header.
if(WIN32)
  set(VELLUMO_QUICK -O0 -g0 -fno-stack-protector)
else()
  set(VELLUMO_QUICK -O0)
endif()

add_library(vellumo_precompiled OBJECT ${CMAKE_CURRENT_LIST_DIR}/precompiled.cpp)
target_compile_options(vellumo_precompiled PRIVATE ${VELLUMO_QUICK})
target_precompile_headers(vellumo_precompiled PRIVATE ${VELLUMO_PRECOMPILED})

function(vellumo_quick)
  foreach(target IN LISTS ARGN)
    target_compile_options(${target} PRIVATE ${VELLUMO_QUICK})
    target_precompile_headers(${target} REUSE_FROM vellumo_precompiled)
    get_target_property(type ${target} TYPE)
    if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 8 AND type STREQUAL "EXECUTABLE")
      target_link_options(${target} PRIVATE -wrapper ${PROJECT_SOURCE_DIR}/tools/lld-of-mingw)
    endif()
  endforeach()
endfunction()

# All targets made below `folder`; called when they exist.
function(vellumo_targets_below out folder)
  set(found)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type MATCHES "STATIC_LIBRARY|EXECUTABLE")
      list(APPEND found ${target})
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(below IN LISTS folders)
    vellumo_targets_below(more ${below})
    list(APPEND found ${more})
  endforeach()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

function(vellumo_quick_folder folder)
  vellumo_targets_below(targets ${folder})
  vellumo_quick(${targets})
endfunction()
