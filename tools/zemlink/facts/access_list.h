// Who may write a file or folder.
#pragma once

#include <string>
#include <vector>

namespace zemlink {

enum class Accounts {
    all,
    groupsOfAllUsers // such as Everyone, Authenticated Users and Users
};

// The accounts with an entry in the access list that allows to change or replace the file or, for a
// folder, files in it, other than the user, administrators and the system. Empty also when the list
// cannot be read.
std::vector<std::wstring> otherWriters(const std::wstring& path, Accounts accounts);

} // namespace zemlink
