# Cross-compiles 64-bit Windows programs with MinGW-w64 (POSIX threads) and runs them under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# LLVM's archiver where it is installed: GNU's takes seconds for an object with many sections.
find_program(CMAKE_AR NAMES llvm-ar-19 x86_64-w64-mingw32-ar)
find_program(CMAKE_RANLIB NAMES llvm-ranlib-19 x86_64-w64-mingw32-ranlib)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../script/lib/start_in_wine)
