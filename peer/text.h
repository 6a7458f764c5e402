// Text of exchange files: conversions between code pages, lines, comparison.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace peer {

// An unpaired surrogate becomes U+FFFD.
std::string toUtf8(std::wstring_view text);
// Bytes that are not UTF-8 become U+FFFD.
std::wstring fromUtf8(std::string_view bytes);

// The system's ANSI code page, in which hosts read their machine settings. Empty when the code page
// lacks a character of the text.
std::optional<std::string> toAnsi(std::wstring_view text);
std::wstring fromAnsi(std::string_view bytes);
std::string ansiToUtf8(std::string_view bytes);

// The text of any file: UTF-16 (little-endian) after its byte-order mark, else UTF-8 with or
// without one, else the ANSI code page.
std::wstring fromFileBytes(std::string_view bytes);

// The lines without their ends: a line feed, with or without a carriage return before it. The last
// line may lack its end. The results refer to `bytes`.
std::vector<std::string_view> fileLines(std::string_view bytes);

// Ignores the case of the letters A to Z.
bool isSameIgnoringCase(std::wstring_view a, std::wstring_view b);

} // namespace peer
