// Look-ups in the Companion's settings file, "\cfg\settings.ini" below the installation folder.
// Each line read also drains a line of standard input (Quirk Q34).
#pragma once

#include "companion/standard_input.h"
#include "platform/files.h"

#include <string>

namespace torvapdm {

// The value of the last line that holds the identifier; empty when there is none or the file cannot
// be opened.
std::string getSetting(const std::string& identifier);

// True when the setting is "y" or "Y". Looks it up a second time when the first value is not "y".
bool isSettingOn(const std::string& identifier);

// Calls `visit` with each line of the file, which may be null, its line feed included, and drains a
// line of standard input after each.
template <class Visit>
void forEachSettingsLine(const OwnFile& file, Visit&& visit)
{
    char line[1024];
    while (file && std::fgets(line, sizeof line, file.get())) {
        visit(line);
        drainStandardInputLine();
    }
}

} // namespace torvapdm
