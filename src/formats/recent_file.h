// One entry of the list of recently opened files. No platform header.
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

struct RecentFile {
    std::int32_t id;
    std::wstring path;
};

} // namespace torvapdm
