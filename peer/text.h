// Conversions between the wide text of the program and the 8-bit text of files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace companion {

// Half a surrogate pair becomes U+FFFD.
std::string toUtf8(std::wstring_view text);
// Bytes that are not UTF-8 become U+FFFD.
std::wstring fromUtf8(std::string_view bytes);

// The system's ANSI code page, which hosts read their machine settings with. Empty when a
// character has no place in it.
std::optional<std::string> toAnsi(std::wstring_view text);
std::wstring fromAnsi(std::string_view bytes);

// The text of any file: UTF-16 (little-endian) behind its byte-order mark, else UTF-8 with or
// without one, else the ANSI code page.
std::wstring fromFileBytes(std::string_view bytes);

} // namespace companion
