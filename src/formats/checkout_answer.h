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
    std::int32_t id = 0; // 0: no file
    std::wstring path;   // everything behind the first blank, later lines included
};

// Interprets the answer: its first word is looked for in the first line. Without a blank there it
// is unusable. For a file, the first three letters of that word go into `typePrefix`, fewer when it
// is shorter; otherwise `typePrefix` stays.
//
// Throws std::out_of_range for a first word of fewer than three characters.
CheckoutAnswer interpretAnswer(const std::wstring& text, std::wstring& typePrefix);

} // namespace torvapdm
