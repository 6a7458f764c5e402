// The Companion's answer to a check-out request. No platform header: this is a decision.
//
//   CAD1234 C:\Parts\bracket.mcam    kind "CAD", id 1234, the path
//   CHECKIN anything                 the open file has been checked in
#pragma once

#include <cstdint>
#include <string>

namespace torvapdm {

struct CheckoutAnswer {
    enum class Kind { unusable, checkIn, file };

    Kind kind = Kind::unusable;
    std::wstring typePrefix; // the first three letters of the first word
    std::int32_t id = 0;     // 0: no file
    std::wstring path;       // everything behind the first blank, later lines included
};

// Interprets the answer: its first word is looked for in the first line. Without a blank there it
// is unusable.
//
// Throws std::out_of_range for a first word of one or two characters.
CheckoutAnswer interpretAnswer(const std::wstring& text);

} // namespace torvapdm
