// Wine declares _finddata_t twice, and defines the POSIX names as macros, which would rename
// members of the C++ library.
#pragma once
#include <corecrt_io.h>
#define _FINDDATA_T_DEFINED
#include_next <io.h>
#undef access
#undef chmod
#undef close
#undef creat
#undef dup
#undef dup2
#undef eof
#undef filelength
#undef isatty
#undef locking
#undef lseek
#undef mktemp
#undef open
#undef read
#undef setmode
#undef sopen
#undef tell
#undef umask
#undef unlink
#undef write
