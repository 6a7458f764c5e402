#include "companion/settings.h"

#include "companion/installation.h"
#include "formats/settings_file.h"
#include "platform/narrow_text.h"

namespace torvapdm {

std::string getSetting(const std::string& identifier)
{
    FILE* stream = nullptr;
    const bool isOpen = fopen_s(&stream, toNarrowByRuntime(settingsFilePath()).c_str(), "r") == 0;
    const OwnFile file(isOpen ? stream : nullptr);
    std::string value;
    forEachSettingsLine(file, [&](const char* line) { applySettingLine(line, identifier, value); });
    return value;
}

bool isSettingOn(const std::string& identifier)
{
    return getSetting(identifier) == "y" || getSetting(identifier) == "Y";
}

} // namespace torvapdm
