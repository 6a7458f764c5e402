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
  add_link_options(-static -fstack-protector-strong
                   -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
  # A reproducible build: no time stamp in the programs.
  add_link_options(-Wl,--no-insert-timestamp)
  # Ends the program when the guard of a stack frame has been overwritten.
  add_compile_options(-fstack-protector-strong)
  # One section for each function, so that the linker drops the ones that nothing uses; most of the
  # C++ library is among them.
  add_compile_options(-ffunction-sections -fdata-sections)
  add_link_options(-Wl,--gc-sections)
endif()

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
