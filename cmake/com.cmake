# Type libraries, headers and interface identifiers from IDL.
#
#   vellumo_idl(<file.idl> [IMPORTS <stems...>])
#
# makes the target vellumo_idl_<stem>: whoever links it may #include <stem.h> and has the identifiers.
# The type library is ${PROJECT_BINARY_DIR}/idl/<stem>/<stem>.tlb (property VELLUMO_TLB of the target).
# "@VELLUMO_VERSION@" in the file stands for the version; the finished text lies beside the type library.
# IMPORTS names the other IDL files that this one imports, or whose type library it refers to.

enable_language(C)
find_path(VELLUMO_STDOLE2 stdole2.tlb NO_CMAKE_FIND_ROOT_PATH REQUIRED
  PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows)
find_path(VELLUMO_WINE_IDL oaidl.idl NO_CMAKE_FIND_ROOT_PATH REQUIRED
  PATHS /usr/include/wine/wine/windows /usr/include/wine/windows)

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(VELLUMO_WIDL_BITS --win64)
else()
  set(VELLUMO_WIDL_BITS --win32)
endif()

function(vellumo_idl file)
  cmake_parse_arguments(PARSE_ARGV 1 IDL "" "" "IMPORTS")
  cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
  cmake_path(GET file STEM stem)
  cmake_path(GET file PARENT_PATH source)
  set(out ${PROJECT_BINARY_DIR}/idl/${stem})
  set(target vellumo_idl_${stem})
  file(MAKE_DIRECTORY ${out})

  set(flags ${VELLUMO_WIDL_BITS} -I ${source} -I ${VELLUMO_WINE_IDL} -L ${VELLUMO_STDOLE2})
  set(needed ${file})
  set(imports)
  foreach(import IN LISTS IDL_IMPORTS)
    list(APPEND flags -L ${PROJECT_BINARY_DIR}/idl/${import})
    get_target_property(tlb vellumo_idl_${import} VELLUMO_TLB)
    list(APPEND needed ${source}/${import}.idl ${tlb})
    list(APPEND imports vellumo_idl_${import})
  endforeach()

  # widl leaves temporary files in the folder it runs in, so each IDL file has a folder of its own.
  # The version is no part of the header, which thus stays as it is when only the version changes.
  configure_file(${file} ${out}/${stem}.idl @ONLY)
  add_custom_command(OUTPUT ${out}/${stem}.tlb
    COMMAND ${VELLUMO_WIDL} ${flags} -t -o ${out}/${stem}.tlb ${out}/${stem}.idl
    COMMAND ${PROJECT_SOURCE_DIR}/tools/timeless-typelib ${out}/${stem}.tlb
    DEPENDS ${needed} ${out}/${stem}.idl WORKING_DIRECTORY ${out} COMMENT "widl ${stem}.tlb" VERBATIM)
  add_custom_command(OUTPUT ${out}/${stem}.h ${out}/${stem}_i.c
    COMMAND ${VELLUMO_WIDL} ${flags} -h -o ${out}/${stem}.h ${file}
    COMMAND ${VELLUMO_WIDL} ${flags} -u -o ${out}/${stem}_i.c ${file}
    DEPENDS ${needed} WORKING_DIRECTORY ${out} COMMENT "widl ${stem}.idl" VERBATIM)

  add_library(${target} STATIC ${out}/${stem}_i.c ${out}/${stem}.tlb)
  # Generated code is no more ours than the system's headers are: no warnings from it.
  target_compile_options(${target} PRIVATE -w)
  target_include_directories(${target} SYSTEM PUBLIC ${out})
  target_link_libraries(${target} PUBLIC ${imports})
  set_target_properties(${target} PROPERTIES VELLUMO_TLB ${out}/${stem}.tlb)
endfunction()
