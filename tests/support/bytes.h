// Whole files as bytes, text conversions, and the lines of a log or a trace.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

// The file's bytes; nothing when it cannot be opened. Shares the file fully.
std::optional<std::string> readBytes(const std::wstring& path);

// Replaces the file; ends the process with a message when that fails.
void writeBytes(const std::wstring& path, std::string_view bytes);

std::string toUtf8(const std::wstring& text);
std::wstring fromUtf8(const std::string& text);

using Lines = std::vector<std::wstring>;

// The lines of a text, without their line ends; a last line without one counts.
Lines linesOf(const std::wstring& text);
// How many lines contain the text.
size_t count(const Lines& lines, const std::wstring& text);
// The lines that start with the text, in their order.
Lines linesThatStart(const Lines& lines, const std::wstring& text);

} // namespace testing_support
