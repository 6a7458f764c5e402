// The Companion's answer to a check-out command, `TORVA ZEM-<number>.tmp`: UTF-16,
// `CAD1234 C:\Parts\bracket.mcam` or `CHECKIN anything`.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace peer {

enum class AnswerKind { unusable, checkIn, file };

struct CheckoutAnswer {
    AnswerKind kind = AnswerKind::unusable;
    std::wstring fileType{};            // file: the first three characters of the first word
    std::int32_t id = 0;                // file: the number after the type, 0 if there is none
    std::wstring path{};                // file: everything after the first space
    std::vector<std::string> remarks{}; // what is wrong with it, one sentence each
};

CheckoutAnswer parseCheckoutAnswer(std::string_view bytes);

} // namespace peer
