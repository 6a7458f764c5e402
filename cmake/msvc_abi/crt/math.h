// The functions that libc++ calls and Wine does not declare. Here, long double is the same as
// double.
#pragma once
#include_next <math.h>
#ifdef __cplusplus
extern "C" {
#endif
static inline long double copysignl(long double x, long double y)
{
    return copysign(x, y);
}
static inline long double logbl(long double x)
{
    return logb(x);
}
static inline long double scalbnl(long double x, int n)
{
    return scalbn(x, n);
}
static inline long double fabsl(long double x)
{
    return __builtin_fabs(x);
}
_ACRTIMP double __cdecl nan(const char*);
#ifdef __cplusplus
}
#endif
