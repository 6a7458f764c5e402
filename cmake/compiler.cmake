# What every target of ours is compiled and linked with.
#
# add_own_options(TARGET) sets the warnings; it is kept apart from the global settings so that
# GoogleTest's sources are not held to them.
add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0A00)

if(MSVC)
  # The C library's and the sockets' older names are meant.
  add_compile_definitions(_CRT_SECURE_NO_WARNINGS _WINSOCK_DEPRECATED_NO_WARNINGS)
  # Two entry points let an exception propagate to the host. With /EHsc the compiler would assume that
  # functions with C linkage never throw.
  string(REPLACE "/EHsc" "/EHs" CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
endif()

if(MINGW)
  # Linked statically, so that the programs need no other DLLs than Windows' own.
  add_link_options(-static -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
  # A reproducible build: no time stamp in the programs.
  add_link_options(-Wl,--no-insert-timestamp)
  # Ends the program when the guard of a stack frame has been overwritten; stack_guard, below, is the
  # runtime for it.
  add_compile_options(-fstack-protector-strong)
  # One section for each function, so that the linker drops the ones that nothing uses; most of the
  # C++ library is among them. Not -fdata-sections, which stores zeros in the file.
  add_compile_options(-ffunction-sections)
  add_link_options(-Wl,--gc-sections)
  # GCC 12 otherwise keeps a value in a register that its own copy of an inline function does not change,
  # while the linker may choose another object's copy, which does.
  add_compile_options(-fno-ipa-ra)
  # GCC looks for memory to free only in a unit that takes more than this many kilobytes, which none does.
  add_compile_options("SHELL:--param ggc-min-heapsize=1000000")
endif()

# Compile options for what does not ship. One section for each function would only cost time.
set(built_quickly -O0 -fno-function-sections)

function(add_own_options target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX /utf-8 /permissive-)
    if(CMAKE_CXX_COMPILER_ID STREQUAL MSVC)
      # Headers in angle brackets are the framework's, the development kit's and the system's.
      target_compile_options(${target} PRIVATE /external:anglebrackets /external:W0)
    else()
      target_compile_options(${target} PRIVATE
        -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual -Wshadow -Wunreachable-code
        ${own_options_at_end})
    endif()
  else()
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Werror
      -Wconversion -Wsign-conversion -Wdouble-promotion
      -Wold-style-cast -Wcast-qual
      -Wshadow -Wredundant-decls
      -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi -Wmismatched-tags
      -Wzero-as-null-pointer-constant -Wformat=2 -Wundef -Wunused-macros -Wvla)
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
      target_compile_options(${target} PRIVATE
        -Wduplicated-cond -Wduplicated-branches -Wlogical-op -Warith-conversion
        -Wformat-signedness -Wsuggest-override -Wctor-dtor-privacy -Wdeprecated-copy-dtor -Walloca
        # Left out: -Wnull-dereference, which suspects GCC 12's own containers; -Wcast-align, which
        # suspects every look into a module's headers; -Wuseless-cast, whose casts another
        # compiler's types need.
        -Wno-restrict) # GCC 12 warns of its own string assignment.
    endif()
  endif()
  set_target_properties(${target} PROPERTIES PREFIX "")
endfunction()

# Compiles the sources of each folder together, where the preset asks for it. The headers are then
# parsed once for a folder, which takes most of the time of a small source. What a source keeps to
# itself needs a name that no other source of its folder uses.
function(compile_by_folder target)
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    cmake_path(GET source PARENT_PATH folder)
    string(MAKE_C_IDENTIFIER "in_${folder}" group)
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
  # Between sources that are only compiled together these mean nothing.
  if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(${target} PRIVATE -Wno-subobject-linkage -Wno-shadow)
  elseif(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    target_compile_options(${target} PRIVATE -Wno-shadow)
  endif()
endfunction()

# Links the programs of this folder, none of which ships, with LLVM's linker where it is installed. Sections
# that begin on a page of the file are mapped; others are read at each start of a program.
macro(link_quickly)
  if(MINGW)
    add_link_options(-s -Wl,--file-alignment,4096)
  endif()
  find_program(LLVM_LINKER ld.lld-19)
  if(MINGW AND LLVM_LINKER)
    add_link_options(-wrapper ${CMAKE_SOURCE_DIR}/cmake/link_with_lld)
  endif()
endmacro()

# Compiles this folder, of which nothing ships, with Clang where it is installed. Without optimisation it takes
# half of GCC's time.
macro(compile_quickly)
  find_program(CLANG clang++-19)
  if(MINGW AND CLANG)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_SOURCE_DIR}/cmake/compile_with_clang)
  endif()
endmacro()

# optimise(SOURCES): of a folder that is otherwise not optimised, those that touch each pixel of a
# picture or each number of a range.
function(optimise)
  if(NOT MSVC)
    set_source_files_properties(${ARGN} PROPERTIES
      COMPILE_OPTIONS "-O2;-Wno-stringop-overflow" # GCC 12 suspects its own containers.
      SKIP_PRECOMPILE_HEADERS ON SKIP_UNITY_BUILD_INCLUSION ON)
  endif()
endfunction()

if(MINGW)
  add_library(stack_guard STATIC ${CMAKE_SOURCE_DIR}/src/platform/stack_guard.cpp)
  add_own_options(stack_guard)
  link_libraries(stack_guard)
endif()
