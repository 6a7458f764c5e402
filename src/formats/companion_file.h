// A file as the Companion names it. No platform header.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

struct CompanionFile {
    std::int32_t id = 0; // the Companion's number for the file or for the request that names it
    std::wstring path;
};

} // namespace torvapdm
