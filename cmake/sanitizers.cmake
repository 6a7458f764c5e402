# The fuzzer's build: coverage instrumentation, and the process ends at the first memory error or undefined
# behaviour.
add_compile_options(-fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow
                    -fno-sanitize-recover=all -fno-omit-frame-pointer)
add_link_options(-fsanitize=address,undefined,float-cast-overflow)
add_compile_definitions(_GLIBCXX_ASSERTIONS)
