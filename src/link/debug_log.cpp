#include "link/debug_log.h"

#include "link/installation_folder.h"
#include "link/text.h"

#include <cstdarg>

namespace torvapdm {

void debugLog(const char* format, ...)
{
    const std::string path = truncateToBytes(getInstallationFolder()) + "\\sys\\mcxlog.txt";
    FILE* const file = std::fopen(path.c_str(), "a");
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
