# The version that everything we ship carries: a.b.c of the project and the number of commits, with the last commit's
# short name. Without the whole history (a shallow clone, an unpacked archive) the number is 0; `tools/package` refuses.
set(VELLUMO_BUILD 0)
set(VELLUMO_COMMIT unknown)
function(vellumo_git out)
  execute_process(COMMAND git ${ARGN} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    OUTPUT_VARIABLE text OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
  if(failed)
    set(text "")
  endif()
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

vellumo_git(shallow rev-parse --is-shallow-repository)
if(shallow STREQUAL "false")
  vellumo_git(VELLUMO_BUILD rev-list --count HEAD)
  vellumo_git(VELLUMO_COMMIT rev-parse --short=8 HEAD)
  # Each commit makes another version.
  vellumo_git(log rev-parse --path-format=absolute --git-path logs/HEAD)
  if(EXISTS "${log}")
    set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${log})
  endif()
endif()
set(VELLUMO_VERSION ${PROJECT_VERSION}.${VELLUMO_BUILD})
