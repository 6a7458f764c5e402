// What the two supported compilers and their C libraries treat differently.
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

// True when an input stream can open the file in deny-none sharing, which shares reading and
// writing but not deletion. The stream is closed again.
inline bool canOpenWithoutDeleteSharing(const char* path)
{
#if defined(_MSC_VER)
    return std::ifstream(path, std::ios_base::in, _SH_DENYNO).is_open();
#else
    // libstdc++'s streams take no sharing mode, the C stream does.
    FILE* const stream = _fsopen(path, "r", _SH_DENYNO);
    return stream && std::fclose(stream) == 0;
#endif
}

// Closes a stream that may be null. MinGW's C library ignores a null stream; Visual C++'s calls its
// invalid-parameter handler, which by default ends the process.
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
