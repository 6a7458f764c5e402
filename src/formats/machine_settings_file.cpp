#include "formats/machine_settings_file.h"

#include "formats/decimal.h"

#include <string_view>

namespace torvapdm {

MachineSettings parseMachineSettings(const std::wstring& line)
{
    MachineSettings settings;
    std::wstring_view rest = line;
    int field = 0;
    for (size_t bar; (bar = rest.find(L'|')) != std::wstring_view::npos;
         rest.remove_prefix(bar + 1), ++field)
        if (field == 1)
            settings.ncPathNumber = parseDecimalOrZero(rest.substr(0, bar));
        else if (field == 2)
            settings.secondNumber = parseDecimalOrZero(rest.substr(0, bar));
    settings.machinePath = rest.substr(0, rest.find(L'\n'));
    return settings;
}

} // namespace torvapdm
