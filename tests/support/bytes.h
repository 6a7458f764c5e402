// Whole files as bytes, and text conversions of the tests' own.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

// The file's bytes; nothing when it cannot be opened. Denies nobody anything.
std::optional<std::string> readBytes(const std::wstring& path);

// Writes the file anew; ends the process with a message when that fails.
void writeBytes(const std::wstring& path, std::string_view bytes);

std::string toUtf8(const std::wstring& text);
std::wstring fromUtf8(const std::string& text);

// The lines of a text, without their line ends; a last line without one counts.
std::vector<std::wstring> linesOf(const std::wstring& text);

} // namespace testing_support
