# Compiler and linker options for all targets of this project.
#
# add_own_options(TARGET) sets the warnings. It is separate from the global settings so that they do not
# apply to GoogleTest's sources.
add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0A00)

if(MSVC)
  # The older function names of the C library and of the sockets library are used on purpose.
  add_compile_definitions(_CRT_SECURE_NO_WARNINGS _WINSOCK_DEPRECATED_NO_WARNINGS)
endif()

if(MINGW)
  # Link the compiler's libraries statically: at run time only Windows' DLLs are needed.
  add_link_options(-static -fstack-protector-strong
                   -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
  # Reproducible output.
  add_link_options(-Wl,--no-insert-timestamp)
  # A stack buffer overflow ends the program before it can be exploited.
  add_compile_options(-fstack-protector-strong)
endif()

function(add_own_options target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX /utf-8)
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
        # Not used: -Wnull-dereference has false positives in GCC 12's own containers; -Wcast-align
        # reports every access to a module's headers; -Wuseless-cast reports casts that the other
        # compiler's types need.
        -Wno-restrict) # False positives in GCC 12's own string assignment.
    endif()
  endif()
  set_target_properties(${target} PROPERTIES PREFIX "")
endfunction()
