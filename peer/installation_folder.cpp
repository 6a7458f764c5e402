#include "peer/installation_folder.h"

namespace zemlink {
namespace {

constexpr std::uint32_t plainText = 1;
constexpr std::uint32_t expandableText = 2;

// Deliberate: one unit is taken off as the terminating zero whatever it is, because the add-in does
// so; a value written without its zero loses its last character there, and therefore here.
std::wstring countingText(const std::optional<RegistryValue>& value)
{
    const bool isText = value && (value->type == plainText || value->type == expandableText);
    if (!isText || value->text.empty())
        return {};
    return value->text.substr(0, value->text.size() - 1);
}

} // namespace

Folder folderOf(const std::optional<RegistryValue>& view32,
                const std::optional<RegistryValue>& view64)
{
    const std::wstring seen = countingText(view32);
    const std::wstring other = countingText(view64);
    Folder folder;
    if (!seen.empty()) {
        folder.path = seen;
        folder.source = other == seen ? FolderSource::registry : FolderSource::view32Only;
    }
    if (!other.empty() && other != folder.path)
        folder.elsewhere = other;
    return folder;
}

std::string sourceText(FolderSource source)
{
    switch (source) {
    case FolderSource::registry:
        return "registry value";
    case FolderSource::view32Only:
        return "registry value, in the 32-bit view alone";
    case FolderSource::standard:
        break;
    }
    return "default, the registry names none";
}

} // namespace zemlink
