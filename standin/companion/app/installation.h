// The installation folder: the directory of this program.
#pragma once

#include <string>

namespace companion {

// Without a trailing backslash.
std::wstring installationFolder();

// Creates the missing subfolders.
void createSubfolders(const std::wstring& folder);

// The folder for files that hosts open; created if missing. Hosts accept only plain ASCII paths:
// for any other installation folder its short name is used if the disk has short names.
std::wstring workFolder(const std::wstring& folder);

// Writes this folder to the registry of the current user as the installation folder. False on
// failure.
bool registerFolder(const std::wstring& folder);

} // namespace companion
