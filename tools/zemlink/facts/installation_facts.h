// The add-in's setup entry, the permissions of the installation folder and its working copies.
#pragma once

#include "tools/zemlink/reports/facts.h"

namespace zemlink {

// Success when the path exists and is a folder or is a file, as expected.
Result checkPath(const std::wstring& path, bool isFolderExpected);

std::optional<SetupEntry> findSetup();

// The parts of the installation folder that accounts other than the user, administrators and the
// system may write; of the folders for the hosts' files only those that a group of all users may.
// Likewise of the program folder of the host with the installed add-in.
std::vector<OpenPath> findOpenPaths(const std::wstring& folder,
                                    const std::optional<SetupEntry>& setup);

// The paths in the Companion's list, without those it does not know yet.
std::vector<std::wstring> readWorkingCopies(const std::wstring& folder);

} // namespace zemlink
