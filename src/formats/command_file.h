// The requests that the Companion writes into the command file, and how they are told apart.
//
//   check-in   "CHECKIN", alone or followed by a blank and anything
//   open       EF BB BF, the request id in decimal, one blank, the path, one line feed:
//              EF BB BF 31 32 20 43 3A 5C 61 0A  opens C:\a as request 12
//   new file   an open request whose path is empty:  EF BB BF 37 20 0A
//
// No platform header: this is a decision.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace torvapdm {

struct CommandRequest {
    enum class Kind { malformed, checkIn, newFile, open };

    Kind kind = Kind::malformed;
    std::int32_t id = 0; // of an open or new-file request
    std::wstring path;   // of an open request: each byte, as a signed value, one UTF-16 unit
};

// Interprets the whole content of a command file. A text that is no check-in is taken for an open
// request; one whose id or path cannot be cut out (no blank, fewer than three bytes, no digits, a
// number outside 32 bits) is malformed.
CommandRequest interpretCommandText(std::string_view text);

} // namespace torvapdm
