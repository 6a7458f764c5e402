// Writes requests as a Companion does.
#pragma once

#include <string>
#include <string_view>

namespace testing_support {

// Opens the existing command file with all three sharing rights and writes the request in one
// piece. False when the file does not exist or the write fails.
bool writeRequest(const std::wstring& commandFile, std::string_view request);

// The bytes of an open request: mark, id, blank, path, line feed.
std::string openRequest(int id, const std::string& path);

} // namespace testing_support
