// The installation folder, from the registry.
#pragma once

#include "peer/wire_constants.h"

#include <cstdint>
#include <optional>
#include <string>

namespace peer {

// A value as the registry stores it.
struct RegistryValue {
    std::uint32_t type = 0;
    std::wstring text{}; // its bytes as UTF-16, including any null terminators
};

enum class FolderSource {
    registry,   // the same value in both views of the registry
    view32Only, // only in the 32-bit view, which is the one that hosts read
    standard    // no usable value in the registry
};

struct Folder {
    std::wstring path = standardFolder;
    FolderSource source = FolderSource::standard;
    std::wstring otherView{}; // the folder in the 64-bit view, if it is a different one
};

// The folder that a host's add-in uses. A value counts if it is a string, expandable or not, and
// not empty; an expandable one is not expanded.
Folder chooseFolder(const std::optional<RegistryValue>& view32,
                    const std::optional<RegistryValue>& view64);

// The same from the current user's registry.
Folder readInstallationFolder();

} // namespace peer
