# Compiles 64-bit Windows programs for Microsoft's ABI with Clang, libc++ and Wine's headers, and runs them
# under Wine. script/msvc-abi makes what this needs.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(tools ${CMAKE_CURRENT_LIST_DIR}/../build/msvc-abi-tools)
cmake_path(NORMAL_PATH tools)
set(llvm /usr/lib/llvm-19/bin)

set(CMAKE_C_COMPILER ${tools}/bin/clang-cl)
set(CMAKE_CXX_COMPILER ${tools}/bin/clang-cl)
set(CMAKE_C_COMPILER_TARGET x86_64-pc-windows-msvc)
set(CMAKE_CXX_COMPILER_TARGET x86_64-pc-windows-msvc)
set(CMAKE_LINKER ${llvm}/lld-link)
set(CMAKE_AR ${llvm}/llvm-lib)
set(CMAKE_MT ${llvm}/llvm-mt)
set(CMAKE_RC_COMPILER ${llvm}/llvm-rc)

# Wine's C library headers are the universal C library's with _UCRT, and have wchar_t for WCHAR with
# WINE_UNICODE_NATIVE. The targets that share precompiled headers define different macros, which these headers
# do not use.
set(CMAKE_CXX_FLAGS_INIT
  "-fms-compatibility-version=19.29 /X -D_UCRT -DWINE_UNICODE_NATIVE -Wno-clang-cl-pch")
execute_process(COMMAND ${llvm}/clang -print-resource-dir OUTPUT_VARIABLE resources OUTPUT_STRIP_TRAILING_WHITESPACE)
string(APPEND CMAKE_CXX_FLAGS_INIT " \"-DTORVAPDM_CLANG_INTRIN=<${resources}/include/intrin.h>\"")
foreach(folder c++ crt msvcrt windows)
  string(APPEND CMAKE_CXX_FLAGS_INIT " /clang:-isystem${tools}/include/${folder}")
endforeach()
set(CMAKE_C_FLAGS_INIT "-fms-compatibility-version=19.29 /X -D_UCRT -DWINE_UNICODE_NATIVE")
foreach(folder crt msvcrt windows)
  string(APPEND CMAKE_C_FLAGS_INIT " /clang:-isystem${tools}/include/${folder}")
endforeach()
set(CMAKE_RC_FLAGS_INIT "-I ${tools}/include/windows -I ${tools}/include/msvcrt")

foreach(kind EXE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "/libpath:${tools}/lib /manifest:no")
endforeach()
set(CMAKE_CXX_STANDARD_LIBRARIES "libc++.lib kernel32.lib user32.lib gdi32.lib shell32.lib ole32.lib advapi32.lib"
  CACHE STRING "Libraries that every program is linked with")

set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../script/lib/start_in_wine)
