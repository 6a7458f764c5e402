#include "peer/machine_settings.h"

#include "peer/leading_number.h"

namespace zemlink {
std::optional<MachineText> readMachineText(std::string_view bytes)
{
    if (bytes.empty())
        return std::nullopt;
    const size_t lineFeed = bytes.find('\n');
    std::string_view line = bytes.substr(0, lineFeed);
    line.remove_suffix(lineFeed != bytes.npos && line.ends_with('\r') ? 1 : 0);
    MachineText text;
    text.hasMore = lineFeed != bytes.npos && lineFeed + 1 < bytes.size();
    int field = 0;
    for (size_t bar = line.find('|'); bar != line.npos; bar = line.find('|'), ++field) {
        const std::string_view value = line.substr(0, bar);
        if (field == 0)
            text.id = std::string(value);
        else if (field == 1)
            text.ncPath = leadingNumberOrZero(value);
        else if (field == 2)
            text.secondNumber = leadingNumberOrZero(value);
        line.remove_prefix(bar + 1);
    }
    text.machine = std::string(line);
    return text;
}

} // namespace zemlink
