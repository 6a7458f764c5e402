// Locale functions and error texts that Wine exports but does not declare.
#pragma once
#include_next <stdlib.h>
#ifdef __cplusplus
extern "C" {
#endif
_ACRTIMP int __cdecl ___mb_cur_max_func(void);
#ifndef MB_CUR_MAX
#define MB_CUR_MAX ___mb_cur_max_func()
#endif
_ACRTIMP int __cdecl ___mb_cur_max_l_func(_locale_t);
_ACRTIMP int* __cdecl __sys_nerr(void);
_ACRTIMP char** __cdecl __sys_errlist(void);
#define _sys_nerr (*__sys_nerr())
#define _sys_errlist (__sys_errlist())
_ACRTIMP errno_t __cdecl _dupenv_s(char**, size_t*, const char*);
_ACRTIMP __int64 __cdecl _strtoi64_l(const char*, char**, int, _locale_t);
_ACRTIMP unsigned __int64 __cdecl _strtoui64_l(const char*, char**, int, _locale_t);
_ACRTIMP float __cdecl _strtof_l(const char*, char**, _locale_t);
_ACRTIMP double __cdecl _strtod_l(const char*, char**, _locale_t);
_ACRTIMP int __cdecl _mbtowc_l(wchar_t*, const char*, size_t, _locale_t);
#ifdef __cplusplus
}
#endif
