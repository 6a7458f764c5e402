// The installation folder, from what the registry says.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zemlink {

// A value as the registry keeps it.
struct RegistryValue {
    std::uint32_t type = 0;
    std::wstring text{}; // its bytes as UTF-16, with any zeros at the end
};

enum class FolderSource {
    registry,   // both views of the registry say so
    view32Only, // only the 32-bit view, which is the one that hosts ask
    standard    // the registry says nothing that counts
};

struct Folder {
    std::wstring path = L"C:\\TORVA\\ZEM";
    FolderSource source = FolderSource::standard;
    std::wstring elsewhere{}; // what the 64-bit view says, when it is another folder
};

// The folder that a host's add-in works with. A value counts when it is a text, expandable or not,
// and not empty; an expandable one is taken as it stands.
Folder folderOf(const std::optional<RegistryValue>& view32,
                const std::optional<RegistryValue>& view64);

// `registry value`
std::string sourceText(FolderSource source);

} // namespace zemlink
