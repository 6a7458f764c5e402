// The bytes that go to a host's add-in, each as the add-in has to find it.
#include "peer/command_file.h"

#include <gtest/gtest.h>

using namespace companion;

#define MARK "\xEF\xBB\xBF"

TEST(OpenRequest, isMarkIdBlankPathAndLineFeed)
{
    EXPECT_EQ(openRequest(17, L"C:\\ZEM\\work\\bracket.mcam"),
              MARK "17 C:\\ZEM\\work\\bracket.mcam\n");
    EXPECT_EQ(openRequest(-2147483647 - 1, L"a"), MARK "-2147483648 a\n");
    EXPECT_EQ(openRequest(0, L" a b "), MARK "0  a b \n");
}

TEST(OpenRequest, takesPlainAsciiAlone)
{
    EXPECT_EQ(openRequest(1, L" !~"), MARK "1  !~\n");
    for (const wchar_t* path : {L"", L"C:\\M\u00FCller", L"a\tb", L"a\n", L"a\x7F", L"\u4E2D"})
        EXPECT_EQ(openRequest(1, path), std::nullopt) << path;
}

TEST(OpenRequest, isNeverLongerThanTheReaderTakes)
{
    const std::wstring longest(65536 - 6, L'p'); // mark, one digit, blank, line feed
    EXPECT_EQ(openRequest(1, longest).value_or("").size(), 65536u);
    EXPECT_EQ(openRequest(1, longest + L'p'), std::nullopt);
}

TEST(NewFileRequest, isAnOpenRequestWithoutAPath)
{
    EXPECT_EQ(newFileRequest(17), MARK "17 \n");
    EXPECT_EQ(newFileRequest(-1), MARK "-1 \n");
}

TEST(CheckInRequest, isTheWordAndTheNameWithoutMarkAndLineEnd)
{
    EXPECT_EQ(checkInRequest(L"bracket.mcam"), "CHECKIN bracket.mcam");
    EXPECT_EQ(checkInRequest(L""), "CHECKIN ");
    EXPECT_EQ(checkInRequest(L"M\u00FCller\n.mcam"), "CHECKIN M?ller?.mcam");
}

TEST(PlainAscii, isEveryPrintableCharacterAndTheBlank)
{
    EXPECT_TRUE(isPlainAscii(L""));
    EXPECT_TRUE(isPlainAscii(L" C:\\a~b"));
    for (const wchar_t* text : {L"\x1F", L"\x7F", L"\u0080", L"a\u00E4"})
        EXPECT_FALSE(isPlainAscii(text)) << text;
}

TEST(MachineSettings, areOneLineOfFourFields)
{
    EXPECT_EQ(machineSettingsLine(17, 3, 0, L"C:\\Machines\\Mill 3-axis.mcam-mmd"),
              L"17|3|0|C:\\Machines\\Mill 3-axis.mcam-mmd\r\n");
    EXPECT_EQ(machineSettingsLine(-1, -2, -3, L"\u4E2D"), L"-1|-2|-3|\u4E2D\r\n");
}

TEST(MachineSettings, refuseAMachineThatTheReaderWouldTakeApart)
{
    for (const wchar_t* machine : {L"", L"a|b", L"a\rb", L"a\nb"})
        EXPECT_EQ(machineSettingsLine(1, 2, 3, machine), std::nullopt) << machine;
}
