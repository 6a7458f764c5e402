// The content of a host's command file, `temp\mastercam-<process id>.dat`: one command at a time.
//
//   open request      EF BB BF, the id in decimal, a space, the path, a line feed
//                     EF BB BF "17 C:\ZEM\work\bracket.mcam" 0A
//   new-file request  EF BB BF, the id in decimal, a space, a line feed
//                     EF BB BF "17 " 0A
//   check-in          "CHECKIN", a space, the name of the file; no byte-order mark, no line end
//                     "CHECKIN bracket.mcam"
//
// The add-in makes one character of each byte, so a path must be plain ASCII.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace peer {

enum class HostCommandKind { none, checkIn, newFile, open, malformed };

struct HostCommand {
    HostCommandKind kind = HostCommandKind::none;
    std::int32_t id = 0;                // open, newFile
    std::string path{};                 // open: the path's bytes; checkIn: the name after CHECKIN
    std::vector<std::string> remarks{}; // what is wrong with it, one sentence each
};

// The content of a command file as the add-in reads it. An empty file is `none`; bytes that the
// add-in cannot use are `malformed`.
HostCommand parseHostCommand(std::string_view bytes);

// `check-in`
std::string hostCommandName(HostCommandKind kind);

// True when every character is a printable ASCII character or a space.
bool isPlainAscii(std::wstring_view text);

// Empty when the path is empty, is not plain ASCII or makes the request too long.
std::optional<std::string> formatOpenRequest(std::int32_t id, std::wstring_view path);

std::string formatNewFileRequest(std::int32_t id);

// A character of the name that is not plain ASCII becomes a question mark. The add-in ignores the
// name; it is for people who look at the file.
std::string formatCheckIn(std::wstring_view name);

} // namespace peer
