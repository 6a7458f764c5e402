#include "peer/bookmark.h"

#include "peer/numbers.h"

#include <limits>

namespace peer {
namespace {

constexpr std::int64_t largestNumber = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t mostBytes = 999'999'999'999'999;

// Removes the text before the separator, and the separator. Empty without a separator.
std::optional<std::wstring_view> takeUntil(std::wstring_view& text, wchar_t separator)
{
    const size_t end = text.find(separator);
    if (end == text.npos)
        return std::nullopt;
    const std::wstring_view taken = text.substr(0, end);
    text.remove_prefix(end + 1);
    return taken;
}

bool takeWord(std::wstring_view& text, std::wstring_view word)
{
    const bool isFound = text.starts_with(word);
    text.remove_prefix(isFound ? word.size() : 0);
    return isFound;
}

std::optional<std::int32_t> takeNumber(std::wstring_view& text)
{
    const auto digits = takeUntil(text, L' ');
    const auto number = digits ? parseNumber(*digits, 1, largestNumber) : std::nullopt;
    return number ? std::optional(static_cast<std::int32_t>(*number)) : std::nullopt;
}

std::optional<VersionPlan> parsePlan(std::wstring_view text)
{
    const auto number = takeNumber(text);
    const auto version = number ? takeNumber(text) : std::nullopt;
    const auto name = version ? takeUntil(text, L'\n') : std::nullopt;
    if (!name || name->empty() || !text.empty())
        return std::nullopt;
    return VersionPlan{*number, *version, std::wstring(*name)};
}

} // namespace

std::wstring formatBookmark(const Bookmark& bookmark)
{
    if (bookmark.isFinished)
        return L"finished\n";
    std::wstring text = L"taken " + std::to_wstring(bookmark.taken) + L'\n';
    if (bookmark.underWay) {
        const VersionPlan& plan = *bookmark.underWay;
        text += L"storing " + std::to_wstring(plan.number) + L' ' + std::to_wstring(plan.version) +
                L' ' + plan.name + L'\n';
    }
    return text;
}

std::optional<Bookmark> parseBookmark(std::wstring_view text)
{
    if (text == L"finished\n")
        return Bookmark{.isFinished = true};
    const bool isTaken = takeWord(text, L"taken ");
    const auto digits = isTaken ? takeUntil(text, L'\n') : std::nullopt;
    const auto taken = digits ? parseNumber(*digits, 0, mostBytes) : std::nullopt;
    if (!taken)
        return std::nullopt;
    Bookmark bookmark{.taken = static_cast<std::uint64_t>(*taken)};
    if (text.empty())
        return bookmark;
    bookmark.underWay = takeWord(text, L"storing ") ? parsePlan(text) : std::nullopt;
    return bookmark.underWay ? std::optional(bookmark) : std::nullopt;
}

} // namespace peer
