// What one of the two compilers lacks, and what their C libraries treat differently.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <share.h>

#if defined(__GNUC__)
#define TORVA_PRINTF_LIKE(formatIndex, argumentsIndex)                                             \
    __attribute__((format(printf, formatIndex, argumentsIndex)))
#else
#define TORVA_PRINTF_LIKE(formatIndex, argumentsIndex)
#endif

namespace torvapdm {

// True when an input stream opens the file while denying nobody anything (no share for deletion,
// which the C library does not know). The stream is closed again.
inline bool opensDenyingNone(const char* path)
{
#if defined(_MSC_VER)
    return std::ifstream(path, std::ios_base::in, _SH_DENYNO).is_open();
#else
    // This library's streams take no sharing mode; the C stream beneath them does.
    FILE* const stream = _fsopen(path, "r", _SH_DENYNO);
    return stream && std::fclose(stream) == 0;
#endif
}

// Closes a stream that may be null. One C library ignores a null stream, the other reports it to
// its invalid-parameter handler, which would end the process.
inline void closeStream(FILE* stream)
{
#if defined(_MSC_VER)
    const auto ignore = [](const wchar_t*, const wchar_t*, const wchar_t*, unsigned, uintptr_t) {};
    const auto previous = _set_thread_local_invalid_parameter_handler(ignore);
    std::fclose(stream);
    _set_thread_local_invalid_parameter_handler(previous);
#else
    std::fclose(stream);
#endif
}

} // namespace torvapdm
