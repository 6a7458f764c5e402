// The commands that the Companion writes into a command file. No platform header.
//
//   check-in           "CHECKIN", on its own or followed by a space and anything
//   open request       EF BB BF, the request id in decimal, one space, the path, one line feed:
//                      EF BB BF 31 32 20 43 3A 5C 61 0A opens C:\a as request 12
//   new-file request   an open request with an empty path: EF BB BF 37 20 0A
#pragma once

#include "formats/companion_file.h"

#include <string_view>

namespace torvapdm {

struct Command {
    enum class Kind { malformed, checkIn, newFile, open };

    Kind kind = Kind::malformed;
    // The request id of an open or new-file request, and the path of an open request: each byte, as
    // a signed value, is one UTF-16 unit.
    CompanionFile file;
};

// Parses the whole content of a command file. A text that is not a check-in is an open or new-file
// request; one from which no id or path can be cut (no space, fewer than three bytes, no digits, an
// id outside 32 bits) is malformed.
Command parseCommand(std::string_view text);

} // namespace torvapdm
