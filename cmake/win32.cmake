set(bits 32)
set(triple i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR X86)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)

# Old 32-bit hosts do not keep the stack aligned to 16 bytes.
set(CMAKE_C_FLAGS_INIT "-mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "-mstackrealign")
