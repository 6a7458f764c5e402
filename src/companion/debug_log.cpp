#include "companion/debug_log.h"

#include "companion/installation.h"
#include "platform/text.h"

#include <cstdarg>

namespace torvapdm {

void debugLog(const char* format, ...)
{
    const std::string path = truncateToBytes(getInstallationFolder()) + "\\sys\\mcxlog.txt";
    // A unit whose low byte is zero would name somebody else's file.
    const bool namesTheLog = path.find('\0') == std::string::npos;
    FILE* const file = namesTheLog ? std::fopen(path.c_str(), "a") : nullptr;
    if (file) {
        va_list arguments;
        va_start(arguments, format);
        std::vfprintf(file, format, arguments);
        va_end(arguments);
    }
    // Deliberate: closed also when it did not open. One would expect the close inside the test; the
    // order is kept, and the null stream is harmless by way of `closeStream`.
    closeStream(file);
}

} // namespace torvapdm
