# The fuzzer's build: every function that is fuzzed counts what it reaches and ends the process at
# its first misuse of memory or of the language.
add_compile_options(-fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow
                    -fno-sanitize-recover=all -fno-omit-frame-pointer)
add_link_options(-fsanitize=address,undefined,float-cast-overflow)
add_compile_definitions(_GLIBCXX_ASSERTIONS)
