// The Companion's settings file, "\cfg\settings.ini" under the installation folder.
#pragma once

#include <string>

namespace torvapdm {

// The settings file's path.
std::wstring settingsFilePath();

// The value of the last line that holds the identifier; empty when there is none or the file cannot
// be opened. Drains the process's standard input by one line for each line read.
std::string getSetting(const std::string& identifier);

// Reads and drops characters of the process's standard input up to a line feed or its end.
void drainStandardInputLine();

} // namespace torvapdm
