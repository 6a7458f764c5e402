// C11's timespec and the checked conversions, which Wine exports but does not declare.
#pragma once
#include_next <time.h>
#ifndef _TIMESPEC_DEFINED
#define _TIMESPEC_DEFINED
struct timespec {
    time_t tv_sec;
    long tv_nsec;
};
#define TIME_UTC 1
struct _timespec64 {
    __time64_t tv_sec;
    long tv_nsec;
};
#ifdef __cplusplus
extern "C" {
#endif
_ACRTIMP int __cdecl _timespec64_get(struct _timespec64*, int);
_ACRTIMP size_t __cdecl _strftime_l(char*, size_t, const char*, const struct tm*, _locale_t);
static inline errno_t localtime_s(struct tm* t, const time_t* at)
{
    return _localtime64_s(t, at);
}
static inline errno_t gmtime_s(struct tm* t, const time_t* at)
{
    struct tm* result = _gmtime64(at);
    if (result)
        *t = *result;
    return result ? 0 : 22;
}
static inline int timespec_get(struct timespec* t, int base)
{
    return _timespec64_get((struct _timespec64*)t, base);
}
#ifdef __cplusplus
}
#endif
#endif
