// Whole files as bytes, text conversions, and the lines of a log or a trace.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

// Returns the file's bytes, or nothing if it cannot be opened. Opens it with all sharing rights.
std::optional<std::string> readBytes(const std::wstring& path);

// Replaces the file; exits with a message on failure.
void writeBytes(const std::wstring& path, std::string_view bytes);

std::string toUtf8(const std::wstring& text);
std::wstring fromUtf8(const std::string& text);

using Lines = std::vector<std::wstring>;

// Splits text into lines without line ends; an unterminated last line counts.
Lines linesOf(const std::wstring& text);
// The number of lines that contain the text.
size_t count(const Lines& lines, const std::wstring& text);
// The lines that start with the text, in order.
Lines linesThatStart(const Lines& lines, const std::wstring& text);

} // namespace testing_support
