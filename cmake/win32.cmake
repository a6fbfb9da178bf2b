set(bits 32)
set(triple i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR X86)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)

# Old 32-bit hosts do not keep the stack aligned to 16 bytes. Doubles are computed as on the other targets, without
# the excess precision of the old floating-point unit, which makes equal values differ.
set(CMAKE_C_FLAGS_INIT "-mstackrealign -msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-mstackrealign -msse2 -mfpmath=sse")
