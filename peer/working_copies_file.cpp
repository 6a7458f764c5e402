#include "peer/working_copies_file.h"

#include "peer/numbers.h"

#include <algorithm>
#include <limits>

namespace peer {
namespace {

using Limits = std::numeric_limits<std::int32_t>;

constexpr std::wstring_view bar = L" | ";

std::optional<WorkingCopy> parseLine(std::wstring_view line)
{
    const size_t first = line.find(bar);
    const size_t second = first == line.npos ? line.npos : line.find(bar, first + bar.size());
    if (second == line.npos)
        return std::nullopt;
    const std::wstring_view id = line.substr(0, first);
    const auto idNumber = parseNumber(id, Limits::min(), Limits::max());
    const auto number =
        parseNumber(line.substr(first + bar.size(), second - first - bar.size()), 0, Limits::max());
    if (!number || (!idNumber && id != L"-"))
        return std::nullopt;
    WorkingCopy copy{.number = static_cast<std::int32_t>(*number),
                     .path = std::wstring(line.substr(second + bar.size()))};
    if (idNumber)
        copy.id = static_cast<std::int32_t>(*idNumber);
    return copy;
}

} // namespace

std::vector<std::optional<WorkingCopy>> parseWorkingCopies(std::wstring_view text)
{
    std::vector<std::optional<WorkingCopy>> copies;
    while (!text.empty()) {
        const size_t end = std::min(text.find(L'\n'), text.size());
        copies.push_back(parseLine(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return copies;
}

std::wstring formatWorkingCopy(const WorkingCopy& copy)
{
    std::wstring line = copy.id ? std::to_wstring(*copy.id) : L"-";
    line += bar;
    line += std::to_wstring(copy.number);
    line += bar;
    return line + copy.path + L'\n';
}

} // namespace peer
