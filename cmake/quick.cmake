# What only we run need not be fast, it must be there soon: such targets are compiled without optimisation and with a
# precompiled header of the standard library's headers that most files include. A build from nothing takes less than
# half the time. The header holds nothing of the project or of a platform, so a file still compiles only when its room
# may include what it includes; `tools/lint` reads each file without it. Optimised targets do without: g++ 12 then
# forgets which headers are the system's and warns of its own library.

set(VELLUMO_PRECOMPILED
  <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <string> <string_view> <utility> <vector>)

add_library(vellumo_precompiled OBJECT ${CMAKE_CURRENT_LIST_DIR}/precompiled.cpp)
target_compile_options(vellumo_precompiled PRIVATE -O0)
target_precompile_headers(vellumo_precompiled PRIVATE ${VELLUMO_PRECOMPILED})

function(vellumo_quick)
  foreach(target IN LISTS ARGN)
    target_compile_options(${target} PRIVATE -O0)
    target_precompile_headers(${target} REUSE_FROM vellumo_precompiled)
  endforeach()
endfunction()

# All targets made below `folder`; called when they exist.
function(vellumo_quick_folder folder)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type MATCHES "STATIC_LIBRARY|EXECUTABLE")
      vellumo_quick(${target})
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(below IN LISTS folders)
    vellumo_quick_folder(${below})
  endforeach()
endfunction()
