#include "formats/machine_settings_file.h"

#include <gtest/gtest.h>

using namespace torvapdm;

namespace {

struct SettingsCase {
    const wchar_t* line;
    std::optional<int> ncPathNumber;
    std::optional<int> secondNumber;
    const wchar_t* machinePath;
};

const SettingsCase settingsCases[] = {
    {L"17|3|0|C:\\Machines\\Mill 3-axis.mcam-mmd", 3, 0, L"C:\\Machines\\Mill 3-axis.mcam-mmd"},
    {L"17|3|4|C:\\M.mcam-mmd\nmore\n", 3, 4, L"C:\\M.mcam-mmd"},
    {L"17|3|4|C:\\M.mcam-mmd\r\n", 3, 4, L"C:\\M.mcam-mmd\r"},
    {L"17|3|4|a|b|C:\\M", 3, 4, L"C:\\M"},
    {L"17|3|4|\n", 3, 4, L""},
    {L"C:\\whole line.mcam-mmd\n", std::nullopt, std::nullopt, L"C:\\whole line.mcam-mmd"},
    {L"1|2", std::nullopt, std::nullopt, L"2"},
    {L"1|2|", 2, std::nullopt, L""},
    {L"1|2|3", 2, std::nullopt, L"3"},
    {L"1||  -7x|m", 0, -7, L"m"},
    {L"1|words|99999999999|m", 0, 2147483647, L"m"},
    {L"", std::nullopt, std::nullopt, L""},
    {L"a\nb|5|6|m", 5, 6, L"m"},
};

} // namespace

TEST(MachineSettingsLine, isSplitAtItsBars)
{
    for (const SettingsCase& expected : settingsCases) {
        const MachineSettings settings = parseMachineSettings(expected.line);
        EXPECT_EQ(settings.ncPathNumber, expected.ncPathNumber) << expected.line;
        EXPECT_EQ(settings.secondNumber, expected.secondNumber) << expected.line;
        EXPECT_EQ(settings.machinePath, expected.machinePath) << expected.line;
    }
}
