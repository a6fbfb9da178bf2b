# What the two Windows toolchains share; each sets `bits` and `triple` first.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
# mingw's own look through all sections of an object for each of its symbols: half a minute for an archive of ours.
set(CMAKE_AR llvm-ar-14)
set(CMAKE_RANLIB llvm-ranlib-14)
set(VELLUMO_WIDL ${triple}-widl)
set(VELLUMO_TARGET win${bits})

set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# A wrapper, since Wine needs its prefix, its server and a display before a program starts.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run;win${bits})

# Nothing but the system's DLLs beside the library and the programs. The build identifier is what finds the symbols of
# a stripped file; without a time stamp the same source gives the same bytes.
set(linking "-static -static-libgcc -static-libstdc++ -fstack-protector-strong -Wl,--build-id=sha1 -Wl,--no-insert-timestamp")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${linking} -s") # symbols are kept of the library only
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${linking}")
