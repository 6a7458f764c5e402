// The running hosts whose add-in is open.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace companion {

struct Host {
    std::uint32_t process = 0; // process id
    std::wstring title;        // of its main window

    bool operator==(const Host&) const = default;
};

// One row for each process that has a top-level window with the host property, in order of
// process id.
std::vector<Host> findHosts();

} // namespace companion
