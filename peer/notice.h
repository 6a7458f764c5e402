// The notices of a host's add-in, one line for each connection.
//
//   MCAMXMLIMPORTDATAID=17;C:\Temp\sheet.xml          a setup sheet is ready, for request 17
//   ZEMID=17|C:\TORVA\ZEM\work\bracket.mcam           a file is committed; 4294967295 for no id
//   TOOL-17                                           the tool data of request 17 is ready
//   IMPORTNCQUEUE|C:\TORVA\ZEM\temp\ncqueue-17.txt    an NC queue is ready
//
// Each ends with one line feed. A path is 8-bit text in the ANSI code page.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace peer {

enum class NoticeKind { unknown, setupSheet, commit, toolData, ncQueue };

struct Notice {
    NoticeKind kind = NoticeKind::unknown;
    std::int64_t id = 0; // commit: unsigned 32-bit, else signed 32-bit; ncQueue: none
    std::string path{};  // toolData: none
};

// All bytes of one connection. Anything but exactly one such line is unknown: no line feed or more
// than one, another control character, an id that no add-in prints or that is out of range, no
// path.
Notice parseNotice(std::string_view bytes);

// The line with its line feed; empty for an unknown notice.
std::string formatNotice(const Notice& notice);

} // namespace peer
