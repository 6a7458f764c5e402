#include "zemlink/decisions/machinetext.h"

#include <algorithm>
#include <limits>

namespace zemlink {
namespace {

// The number in front of anything else, behind blanks and a sign; 0 for none.
std::int32_t leadingNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const bool isNegative = text.starts_with('-');
    text.remove_prefix(isNegative || text.starts_with('+') ? 1 : 0);
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    std::int64_t number = 0;
    for (std::size_t i = 0; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        number = std::min(number * 10 + (text[i] - '0'), largest);
    }
    return static_cast<std::int32_t>(isNegative ? -number : number);
}

} // namespace

std::optional<MachineText> readMachineText(std::string_view bytes)
{
    if (bytes.empty()) {
        return std::nullopt;
    }
    const std::size_t lineFeed = bytes.find('\n');
    std::string_view line = bytes.substr(0, lineFeed);
    line.remove_suffix(lineFeed != bytes.npos && line.ends_with('\r') ? 1 : 0);
    MachineText text;
    text.hasMore = lineFeed != bytes.npos && lineFeed + 1 < bytes.size();
    int field = 0;
    for (std::size_t bar = line.find('|'); bar != line.npos; bar = line.find('|'), ++field) {
        const std::string_view value = line.substr(0, bar);
        if (field == 0) {
            text.id = std::string(value);
        } else if (field == 1) {
            text.ncPath = leadingNumber(value);
        } else if (field == 2) {
            text.secondNumber = leadingNumber(value);
        }
        line.remove_prefix(bar + 1);
    }
    text.machine = std::string(line);
    return text;
}

} // namespace zemlink
