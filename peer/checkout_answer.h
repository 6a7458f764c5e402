// The Companion's answer to a check-out request: UTF-16, `CAD1234 C:\Parts\bracket.mcam` or
// `CHECKIN anything`.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

enum class AnswerKind { unusable, checkIn, file };

struct AnswerText {
    AnswerKind kind = AnswerKind::unusable;
    std::wstring fileType{};            // of file: the first three letters
    std::int32_t id = 0;                // of file: the number behind them, 0 for none
    std::wstring path{};                // of file: all behind the first blank
    std::vector<std::string> remarks{}; // what is not as it should be, a sentence each
};

AnswerText readAnswerText(std::string_view bytes);

} // namespace zemlink
