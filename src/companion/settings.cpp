#include "companion/settings.h"

#include "platform/compiler.h"
#include "companion/installation.h"
#include "formats/settings_file.h"
#include "platform/text.h"

namespace torvapdm {

std::wstring settingsFilePath()
{
    return getInstallationFolder() + L"\\cfg\\settings.ini";
}

// Deliberate: the settings look-ups wait for a line of standard input after each line they read.
// One would expect no input at all. A host without a console answers with end of input at once;
// whoever starts the host with an open standard input is waited for.
void drainStandardInputLine()
{
    int character;
    do {
        character = std::getchar();
    } while (character != '\n' && character != EOF);
}

std::string getSetting(const std::string& identifier)
{
    std::string value;
    FILE* file = nullptr;
    if (fopen_s(&file, toNarrowByRuntime(settingsFilePath()).c_str(), "r") != 0 || !file)
        return value;
    char line[1024];
    while (std::fgets(line, sizeof line, file)) {
        applySettingLine(line, identifier, value);
        drainStandardInputLine();
    }
    std::fclose(file);
    return value;
}

} // namespace torvapdm
