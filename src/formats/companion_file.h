// A file as the Companion names it. No platform header.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

struct CompanionFile {
    std::int32_t id = 0; // a request id, which becomes the ZEM id of the file that it opens
    std::wstring path;
};

} // namespace torvapdm
