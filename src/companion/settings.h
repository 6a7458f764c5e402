// Look-ups in the Companion's settings file, "\cfg\settings.ini" below the installation folder.
#pragma once

#include "platform/files.h"

#include <string>

namespace torvapdm {

// The value of the last line that holds the identifier; empty when there is none or the file cannot
// be opened. Drains a line of standard input for each line read.
std::string getSetting(const std::string& identifier);

// True when the setting is "y" or "Y". Looks it up a second time when the first value is not "y".
bool isSettingOn(const std::string& identifier);

// Reads and drops standard input up to a line feed or its end.
//
// Quirk Q34: every look-up calls this for each line it reads; the read blocks while standard input
// is open and has no line.
void drainStandardInputLine();

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
