#include "companion/debug_log.h"

#include "companion/installation.h"

#include <cstdarg>

namespace torvapdm {

void debugLog(const char* format, ...)
{
    const std::string path = debugLogPath();
    // An embedded NUL truncates the path, which then names a different file.
    const bool isWholePath = path.find('\0') == std::string::npos;
    FILE* const file = isWholePath ? std::fopen(path.c_str(), "a") : nullptr;
    if (file) {
        va_list arguments;
        va_start(arguments, format);
        std::vfprintf(file, format, arguments);
        va_end(arguments);
    }
    closeStream(file); // Quirk Q35: closed also when it did not open.
}

} // namespace torvapdm
