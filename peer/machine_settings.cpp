#include "peer/machine_settings.h"

#include "peer/numbers.h"

namespace peer {

namespace {

// The add-in's C runtime makes each byte the UTF-16 unit of the same value.
std::int32_t numberIn(std::string_view bytes)
{
    std::wstring text;
    for (const char byte : bytes)
        text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    return parseLeadingNumberOrZero(text);
}

} // namespace

std::optional<MachineSettings> parseMachineSettings(std::string_view bytes)
{
    if (bytes.empty())
        return std::nullopt;
    const size_t lineFeed = bytes.find('\n');
    std::string_view line = bytes.substr(0, lineFeed);
    line.remove_suffix(lineFeed != bytes.npos && line.ends_with('\r') ? 1 : 0);
    MachineSettings settings;
    settings.hasMoreLines = lineFeed != bytes.npos && lineFeed + 1 < bytes.size();
    int field = 0;
    for (size_t bar = line.find('|'); bar != line.npos; bar = line.find('|'), ++field) {
        const std::string_view value = line.substr(0, bar);
        if (field == 0)
            settings.id = std::string(value);
        else if (field == 1)
            settings.ncPath = numberIn(value);
        else if (field == 2)
            settings.secondNumber = numberIn(value);
        line.remove_prefix(bar + 1);
    }
    settings.machine = std::string(line);
    return settings;
}

std::optional<std::wstring> formatMachineSettings(std::int32_t id, std::int32_t ncPath,
                                                  std::int32_t secondNumber,
                                                  std::wstring_view machine)
{
    if (machine.empty() || machine.find_first_of(L"|\r\n") != std::wstring_view::npos)
        return std::nullopt;
    return std::to_wstring(id) + L'|' + std::to_wstring(ncPath) + L'|' +
           std::to_wstring(secondNumber) + L'|' + std::wstring(machine) + L"\r\n";
}

} // namespace peer
