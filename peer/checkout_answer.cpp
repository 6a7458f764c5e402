#include "peer/checkout_answer.h"

#include "peer/numbers.h"

namespace peer {
namespace {

constexpr size_t fileTypeLength = 3;

// The odd byte at the end is dropped.
std::wstring parseUtf16(std::string_view bytes)
{
    std::wstring text;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) |
                                     static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    return text;
}

CheckoutAnswer parseFile(const std::wstring& word, std::wstring path)
{
    if (word.size() < fileTypeLength) {
        return {AnswerKind::unusable,
                word,
                0,
                {},
                {"Its first word has fewer than three characters: the add-in's command fails."}};
    }
    CheckoutAnswer answer{AnswerKind::file, word.substr(0, fileTypeLength),
                          parseLeadingNumberOrZero(word.substr(fileTypeLength)), std::move(path)};
    if (answer.id == 0)
        answer.remarks.emplace_back("It has no id: the add-in loads nothing.");
    if (answer.path.empty())
        answer.remarks.emplace_back("It has no path: the add-in loads nothing.");
    if (answer.path.find(L'\n') != std::wstring::npos)
        answer.remarks.emplace_back("Lines follow the first; they become part of the path.");
    return answer;
}

} // namespace

CheckoutAnswer parseCheckoutAnswer(std::string_view bytes)
{
    const std::wstring text = parseUtf16(bytes);
    const std::wstring line = text.substr(0, text.find(L'\n'));
    const size_t space = line.find(L' ');
    CheckoutAnswer answer;
    if (space == std::wstring::npos)
        answer.remarks.emplace_back("Its first line has no space: it is not an answer.");
    else if (line.substr(0, space) == L"CHECKIN")
        answer.kind = AnswerKind::checkIn;
    else
        answer = parseFile(line.substr(0, space), text.substr(space + 1));
    if (bytes.size() % 2 != 0)
        answer.remarks.emplace_back("It ends in the middle of a character.");
    return answer;
}

} // namespace peer
