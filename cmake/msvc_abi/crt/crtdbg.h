// What GoogleTest uses with Visual C++ and Wine does not declare.
#pragma once
#include_next <crtdbg.h>
#include <stdlib.h>
#define _CRTDBG_FILE_STDERR ((void*)-5)
#define _CrtSetReportFile(type, file) ((void*)0)
#define GetExceptionCode _exception_code
#ifdef __cplusplus
extern "C" {
#endif
_ACRTIMP unsigned __cdecl _set_abort_behavior(unsigned, unsigned);
unsigned long __cdecl _exception_code(void);
#ifdef __cplusplus
}
#endif
