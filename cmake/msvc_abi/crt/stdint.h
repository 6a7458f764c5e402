// Wine's header leaves these macros defined, and libc++'s <wchar.h> then defines only these types.
#pragma once
#include_next <stdint.h>
#undef __need_wint_t
#undef __need_wchar_t
