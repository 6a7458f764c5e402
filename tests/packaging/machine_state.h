// What is on a machine, as lines that can be compared: its files and its registry.
#pragma once

#include <set>
#include <string>
#include <windows.h>

namespace testing_support {

using State = std::set<std::wstring>;

// A line for each file below the folder, with its size and time, and one for each folder, which
// ends in a backslash. The folder that is left out has none; links to other folders, such as Wine's
// to the user's own, are not followed.
State filesBelow(const std::wstring& folder, const std::wstring& leftOut = L"");

// A line for each key below this one, and for each value with its content.
State registryBelow(HKEY root, const std::wstring& key);

// What the first state has and the second one has not.
State onlyIn(const State& first, const State& second);

// For the messages of a failed test.
std::string text(const State& state);

} // namespace testing_support
