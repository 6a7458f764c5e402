// The line of a machine-settings file.
#include "formats/machine_settings_file.h"
#include "fuzz/differences.h"
#include "fuzz/input.h"
#include "fuzz/plain_text.h"
#include "fuzz/targets.h"

namespace fuzzing {

namespace {

using torvapdm::MachineSettings;

// Only a piece with a "|" behind it is a field; the last one, up to its line feed, is the path.
MachineSettings plainSettings(const std::wstring& line)
{
    std::vector<std::wstring> pieces = {{}};
    for (const wchar_t unit : line)
        if (unit == L'|')
            pieces.emplace_back();
        else
            pieces.back() += unit;
    MachineSettings settings;
    if (pieces.size() > 2)
        settings.ncPathNumber = plainNumberOrZero(pieces[1]);
    if (pieces.size() > 3)
        settings.secondNumber = plainNumberOrZero(pieces[2]);
    const std::wstring& last = pieces.back();
    const long long lineFeed = firstOf(last, '\n');
    settings.machinePath = lineFeed < 0 ? last : between(last, 0, lineFeed);
    return settings;
}

std::string checkMachineSettingsLine(std::string_view bytes)
{
    const std::wstring line = wideText(bytes);
    const MachineSettings answer = torvapdm::parseMachineSettings(line);
    const MachineSettings expected = plainSettings(line);
    Differences differences;
    differences.compare("NC-path number", answer.ncPathNumber, expected.ncPathNumber);
    differences.compare("second number", answer.secondNumber, expected.secondNumber);
    differences.compare("machine path", answer.machinePath, expected.machinePath);
    return differences.text();
}

} // namespace

Target machineSettingsLineTarget()
{
    return {"machine_settings_line",
            checkMachineSettingsLine,
            {"17|3|0|C:\\Machines\\Mill 3-axis.mcam-mmd\r\n", "1|2", "C:\\Mill.mcam-mmd\n", "|||",
             "1| -5x|+2147483648|a|b|c\nd|e\n", "1\n|2\n|3\n|p"},
            {"|", "\n", "\r\n", "-1", "2147483647", "-2147483649", "99999999999999999999"}};
}

} // namespace fuzzing
