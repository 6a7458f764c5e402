// Conversions that Wine exports but does not declare.
#pragma once
#include_next <wchar.h>
#ifdef __cplusplus
extern "C" {
#endif
_ACRTIMP errno_t __cdecl wcrtomb_s(size_t*, char*, size_t, wchar_t, mbstate_t*);
_ACRTIMP float __cdecl wcstof(const wchar_t*, wchar_t**);
_ACRTIMP long double __cdecl wcstold(const wchar_t*, wchar_t**);
#ifdef __cplusplus
}
#endif
