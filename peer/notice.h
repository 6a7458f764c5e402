// The lines that a host's add-in sends, one for each connection.
//
//   MCAMXMLIMPORTDATAID=17;C:\Temp\sheet.xml    a setup sheet lies ready, for request 17
//   ZEMID=17|C:\TORVA\ZEM\work\bracket.mcam     a file comes back; 4294967295 for no id
//   TOOL-17                                     the tool data of request 17 lies ready
//   IMPORTNCQUEUE|C:\TORVA\ZEM\temp\ncqueue-17.txt    an NC queue lies ready
//
// Each is ended by one line feed. A path is 8-bit text of the ANSI code page.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace companion {

enum class NoticeKind { unknown, setupSheet, commit, toolData, ncQueue };

struct Notice {
    NoticeKind kind = NoticeKind::unknown;
    std::int64_t id = 0; // commit: unsigned 32-bit, else signed 32-bit; ncQueue: none
    std::string path{};  // toolData: none
};

// Reads all bytes of a connection. Whatever is not exactly one such line is unknown: no line feed
// or more than one, another control character, an id with a sign or zeros that nobody prints or
// out of range, no path.
Notice readNotice(std::string_view bytes);

} // namespace companion
