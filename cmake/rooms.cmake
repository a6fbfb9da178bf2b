# A room is a folder of the source tree and a target that links only the rooms that it may know.
#
#   vellumo_room(NAME <folder> [SOURCES <files...>] [DEPENDS <folders...>] [LIBRARIES <targets...>])
#
# makes the static library vellumo_<folder, with / turned to _> (an interface library when it has no
# sources). The source tree itself is never an include directory. A room's only include directory is a
# folder of the build tree that holds one link, to the room, at the room's own path; so
# #include "host/value.h" compiles only where vellumo_host is linked, and a wrong include is an error.

function(vellumo_room_target out folder)
  string(REPLACE "/" "_" name "vellumo_${folder}")
  set(${out} ${name} PARENT_SCOPE)
endfunction()

# The include directory that shows the room `folder` and nothing else.
function(vellumo_room_includes out folder)
  vellumo_room_target(target ${folder})
  set(includes ${PROJECT_BINARY_DIR}/rooms/${target})
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY ${includes}/${parent})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${includes}/${folder} SYMBOLIC)
  set(${out} ${includes} PARENT_SCOPE)
endfunction()

function(vellumo_room)
  cmake_parse_arguments(PARSE_ARGV 0 ROOM "" "NAME" "SOURCES;DEPENDS;LIBRARIES")
  if(NOT ROOM_NAME OR ROOM_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "vellumo_room needs NAME; not understood: ${ROOM_UNPARSED_ARGUMENTS}")
  endif()
  vellumo_room_target(target ${ROOM_NAME})
  vellumo_room_includes(includes ${ROOM_NAME})
  set(libraries ${ROOM_LIBRARIES})
  foreach(folder IN LISTS ROOM_DEPENDS)
    vellumo_room_target(needed ${folder})
    if(NOT TARGET ${needed})
      message(FATAL_ERROR "room ${ROOM_NAME} depends on ${folder}, which comes later or does not exist")
    endif()
    list(APPEND libraries ${needed})
  endforeach()
  if(ROOM_SOURCES)
    add_library(${target} STATIC ${ROOM_SOURCES})
    target_include_directories(${target} PUBLIC ${includes})
    target_link_libraries(${target} PUBLIC ${libraries})
  else()
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${includes})
    target_link_libraries(${target} INTERFACE ${libraries})
  endif()
endfunction()
