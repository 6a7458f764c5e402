#include "peer/machine_settings.h"

#include <gtest/gtest.h>

using namespace peer;

TEST(PeerMachineSettings, areOneLineOfFourFields)
{
    EXPECT_EQ(formatMachineSettings(17, 3, 0, L"C:\\Machines\\Mill 3-axis.mcam-mmd"),
              L"17|3|0|C:\\Machines\\Mill 3-axis.mcam-mmd\r\n");
    EXPECT_EQ(formatMachineSettings(-1, -2, -3, L"\u4E2D"), L"-1|-2|-3|\u4E2D\r\n");
}

TEST(PeerMachineSettings, rejectSeparatorsInTheMachine)
{
    for (const wchar_t* machine : {L"", L"a|b", L"a\rb", L"a\nb"})
        EXPECT_EQ(formatMachineSettings(1, 2, 3, machine), std::nullopt) << machine;
}

TEST(PeerMachineSettings, areParsed)
{
    const auto text = parseMachineSettings("17|3|-2|C:\\Machines\\Mill 3-axis.mcam-mmd\r\n");
    ASSERT_TRUE(text);
    EXPECT_EQ(text->id, "17");
    EXPECT_EQ(text->ncPath, 3);
    EXPECT_EQ(text->secondNumber, -2);
    EXPECT_EQ(text->machine, "C:\\Machines\\Mill 3-axis.mcam-mmd");
    EXPECT_FALSE(text->hasMoreLines);
}

TEST(PeerMachineSettings, needABarAfterEachField)
{
    EXPECT_FALSE(parseMachineSettings(""));
    const auto two = parseMachineSettings("1|2");
    EXPECT_EQ(two->machine, "2");
    EXPECT_FALSE(two->ncPath);
    const auto bare = parseMachineSettings("C:\\m.mcam-mmd\nmore");
    EXPECT_EQ(bare->machine, "C:\\m.mcam-mmd");
    EXPECT_TRUE(bare->hasMoreLines);
    const auto many = parseMachineSettings("1|x|9999999999|a|b|c\n");
    EXPECT_EQ(many->ncPath, 0);
    EXPECT_EQ(many->secondNumber, 2147483647);
    EXPECT_EQ(many->machine, "c");
}
