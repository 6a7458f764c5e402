// Text of exchange files: conversions between code pages, lines, comparison.
#pragma once

#include <optional>
#include <string>
#include <string_view>

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

} // namespace peer
