// The bytes that go to a host's add-in.
//
// Command file, one request a filling:
//   open      EF BB BF, the id in decimal, a blank, the path, a line feed
//             EF BB BF "17 C:\ZEM\work\bracket.mcam" 0A
//   new file  EF BB BF, the id in decimal, a blank, a line feed
//             EF BB BF "17 " 0A
//   check-in  "CHECKIN", a blank, the name of the file; no byte-order mark, no line end
//             "CHECKIN bracket.mcam"
// The reader makes one character of each byte, so a path must be plain ASCII.
//
// Machine settings, one line of 8-bit text:
//   id|NC-path number|second number|machine definition path, carriage return, line feed
//             "17|3|0|C:\Machines\Mill 3-axis.mcam-mmd" 0D 0A
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace companion {

// More than this many bytes in the command file ends its reader.
constexpr size_t longestRequestBytes = 0x10000;

// True when every character is a printable ASCII character, a blank included.
bool isPlainAscii(std::wstring_view text);

// Empty when the path is empty, is not plain ASCII or makes the request too long.
std::optional<std::string> openRequest(std::int32_t id, std::wstring_view path);

std::string newFileRequest(std::int32_t id);

// A character of the name that is not plain ASCII becomes a question mark: the reader ignores the
// name, it is there for people who look at the file.
std::string checkInRequest(std::wstring_view name);

// The line as text; the caller converts it to the code page that the host runs with. Empty when
// the machine path is empty or holds a '|' or a line end, which the reader would take apart.
std::optional<std::wstring> machineSettingsLine(std::int32_t id, std::int32_t ncPath,
                                                std::int32_t secondNumber,
                                                std::wstring_view machine);

} // namespace companion
