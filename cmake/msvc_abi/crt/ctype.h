// libc++ calls the classification functions that take a locale, which Wine exports but does not
// declare.
#pragma once
#include_next <ctype.h>
#ifdef __cplusplus
extern "C" {
#endif
_ACRTIMP const unsigned short* __cdecl __pctype_func(void);
_ACRTIMP int __cdecl _isalpha_l(int, _locale_t);
_ACRTIMP int __cdecl _islower_l(int, _locale_t);
_ACRTIMP int __cdecl _isupper_l(int, _locale_t);
_ACRTIMP int __cdecl _isdigit_l(int, _locale_t);
_ACRTIMP int __cdecl _isxdigit_l(int, _locale_t);
_ACRTIMP int __cdecl _iswcntrl_l(wint_t, _locale_t);
_ACRTIMP int __cdecl _iswxdigit_l(wint_t, _locale_t);
_ACRTIMP int __cdecl _toupper_l(int, _locale_t);
_ACRTIMP int __cdecl _tolower_l(int, _locale_t);
#ifdef __cplusplus
}
#endif
