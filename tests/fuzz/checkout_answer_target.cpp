// The answer to a check-out request: the kind's prefix as it was before, the text.
#include "formats/checkout_answer.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"

#include <optional>
#include <stdexcept>

namespace fuzzing {

namespace {

using torvapdm::CheckoutAnswer;
using Kind = CheckoutAnswer::Kind;

// Nothing for what the rule lets escape: a first word without a fourth character's place.
std::optional<CheckoutAnswer> plainAnswer(const std::wstring& text, std::wstring& prefix)
{
    const long long blank = firstOf(text, ' ');
    const long long lineFeed = firstOf(text, '\n');
    if (blank < 0 || (lineFeed >= 0 && lineFeed < blank))
        return CheckoutAnswer{};
    const std::wstring word = between(text, 0, blank);
    if (word == L"CHECKIN")
        return CheckoutAnswer{Kind::checkIn, 0, {}};
    prefix = between(word, 0, 3);
    if (blank < 3)
        return std::nullopt;
    const long long size = static_cast<long long>(text.size());
    return CheckoutAnswer{Kind::file, plainNumberOrZero(between(word, 3, size)),
                          between(text, blank + 1, size)};
}

std::optional<CheckoutAnswer> answerTo(const std::wstring& text, std::wstring& prefix)
{
    try {
        return torvapdm::parseCheckoutAnswer(text, prefix);
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

std::string checkCheckoutAnswer(std::string_view bytes)
{
    Input input(bytes);
    std::wstring prefix = input.wideField();
    std::wstring expectedPrefix = prefix;
    const std::wstring text = input.wideRest();
    const auto answer = answerTo(text, prefix);
    const auto expected = plainAnswer(text, expectedPrefix);
    Differences differences;
    differences.compare("prefix", prefix, expectedPrefix);
    differences.compare("is an answer", answer.has_value(), expected.has_value());
    if (!answer || !expected)
        return differences.text();
    differences.compare("kind", static_cast<int>(answer->kind), static_cast<int>(expected->kind));
    differences.compare("id", answer->file.id, expected->file.id);
    differences.compare("path", answer->file.path, expected->file.path);
    return differences.text();
}

} // namespace

Target checkoutAnswerTarget()
{
    return {"checkout_answer",
            checkCheckoutAnswer,
            {"\x1F"
             "CAD1234 C:\\Parts\\bracket.mcam",
             "CAD\x1F"
             "CHECKIN x",
             "old\x1F"
             "AB c",
             "\x1F"
             "ABC5 C:\\a b.mcam\nsecond line",
             "\x1F"
             "CADx12 C:\\f.mcam",
             "\x1F"
             "CAD C:\\f",
             "\x1F"
             "CAD12\n C:\\f",
             "\x1F"
             "CAD-99999999999 p",
             "\x1F CAD1 p",
             "\x1F"
             "CAD\t+5 p"},
            {"CHECKIN", "CAD", " ", "\n", "\r\n", "12", "2147483648", "\x1F"}};
}

} // namespace fuzzing
