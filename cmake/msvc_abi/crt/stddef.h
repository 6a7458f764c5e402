// No #pragma once: headers include this repeatedly to get one definition at a time.
#include_next <stddef.h>
#ifndef _MSVC_ABI_MAX_ALIGN_T
#define _MSVC_ABI_MAX_ALIGN_T
typedef double max_align_t;
#endif
