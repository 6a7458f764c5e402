#include "peer/checkout_answer.h"

#include "peer/text.h"
#include "peer/leading_number.h"

namespace zemlink {
namespace {

constexpr size_t fileTypeLength = 3;

std::wstring fromUtf16(std::string_view bytes)
{
    std::wstring text;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) |
                                     static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    return text;
}

// A character that is no digit ends a number, and none outside ASCII is one.
std::int32_t numberIn(const std::wstring& text)
{
    std::string digits;
    for (const wchar_t c : text)
        digits += c < 0x80 ? static_cast<char>(c) : '?';
    return leadingNumberOrZero(digits);
}

AnswerText readFile(const std::wstring& word, std::wstring path)
{
    if (word.size() < fileTypeLength) {
        return {
            AnswerKind::unusable,
            word,
            0,
            {},
            {"Its first word has fewer than three characters: the add-in's command ends at it."}};
    }
    AnswerText answer{AnswerKind::file, word.substr(0, fileTypeLength),
                      numberIn(word.substr(fileTypeLength)), std::move(path)};
    if (answer.id == 0)
        answer.remarks.emplace_back("It has no id: the add-in loads nothing.");
    if (answer.path.empty())
        answer.remarks.emplace_back("It has no path: the add-in loads nothing.");
    if (answer.path.find(L'\n') != std::wstring::npos)
        answer.remarks.emplace_back("Lines follow the first; they become part of the path.");
    return answer;
}

} // namespace

AnswerText readAnswerText(std::string_view bytes)
{
    const std::wstring text = fromUtf16(bytes);
    const std::wstring line = text.substr(0, text.find(L'\n'));
    const size_t blank = line.find(L' ');
    AnswerText answer;
    if (blank == std::wstring::npos)
        answer.remarks.emplace_back("Its first line has no blank: it is no answer.");
    else if (line.substr(0, blank) == L"CHECKIN")
        answer.kind = AnswerKind::checkIn;
    else
        answer = readFile(line.substr(0, blank), text.substr(blank + 1));
    if (bytes.size() % 2 != 0)
        answer.remarks.emplace_back("It ends within a character.");
    return answer;
}

} // namespace zemlink
