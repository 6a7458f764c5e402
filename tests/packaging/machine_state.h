// The files and registry of a computer as comparable lines.
#pragma once

#include <set>
#include <string>
#include <windows.h>

namespace testing_support {

using State = std::set<std::wstring>;

// One line for each file below the folder, with size and time, and one for each folder, ending in a
// backslash. The excluded folder has no line. Links to other folders, such as Wine's links to the
// user's folders, are not followed.
State filesBelow(const std::wstring& folder, const std::wstring& leftOut = L"");

// One line for each key below this one and for each value with its content.
State registryBelow(HKEY root, const std::wstring& key);

// The lines of the first state that the second one does not have.
State onlyIn(const State& first, const State& second);

// Used in failure messages.
std::string text(const State& state);

} // namespace testing_support
