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
    registry,
    standard // no usable value in the registry
};

struct Folder {
    std::wstring path = standardFolder;
    FolderSource source = FolderSource::standard;
};

// The folder that a host's add-in uses. A value counts if it is a string, expandable or not, and
// not empty; an expandable one is not expanded.
Folder chooseFolder(const std::optional<RegistryValue>& value);

// The same from the current user's registry.
Folder readInstallationFolder();

} // namespace peer
