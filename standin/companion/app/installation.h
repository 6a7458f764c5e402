// The installation folder: the folder in which the program itself lies.
#pragma once

#include <string>

namespace companion {

// Without a backslash at its end.
std::wstring installationFolder();

// Creates the subfolders that the exchanges need, as far as they are missing.
void makeSubfolders(const std::wstring& folder);

// The folder for files that hosts open, created when it is missing. Hosts take a path only as
// plain ASCII: where the installation folder is not, its short form is used if the disk has one.
std::wstring workFolder(const std::wstring& folder);

// Tells the current user's hosts, in the registry, that this folder is the installation folder.
// False when the registry refuses.
bool registerFolder(const std::wstring& folder);

} // namespace companion
