// Windows' API. Visual C++'s framework must be included before windows.h, so where it exists it
// comes first.
#pragma once

#if __has_include(<afxwin.h>)
#include <afxwin.h>
#else
#include <windows.h>
#endif
