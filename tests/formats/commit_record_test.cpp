#include "formats/commit_record.h"
#include "formats/command_lines.h"

#include <gtest/gtest.h>

using namespace torvapdm;
using namespace std::string_literals;

TEST(CommitRecord, endsWithoutATerminator)
{
    EXPECT_EQ(formatCommitRecord(42, L"C:\\a"), "\x2A\0\0\0\x04\0\0\0C\0:\0\\\0a\0"s);
    EXPECT_EQ(formatCommitRecord(0x01020304, L""), "\x04\x03\x02\x01\0\0\0\0"s);
    EXPECT_EQ(formatCommitRecord(0xFFFFFFFF, L"\u20AC"), "\xFF\xFF\xFF\xFF\x01\0\0\0\xAC\x20"s);
}

TEST(CommitRecord, countsUtf16Units)
{
    const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(formatCommitRecord(1, pair), "\x01\0\0\0\x02\0\0\0\x3D\xD8\x00\xDE"s);
    EXPECT_EQ(formatCommitRecord(1, L"C:\\ab.mcam").size(), 28u); // 8 + 2 x 10
}

TEST(CommitRecord, holdsNamesLongerThan255)
{
    const std::string record = formatCommitRecord(0, std::wstring(260, L'n'));
    EXPECT_EQ(record.size(), 528u);
    EXPECT_EQ(record.substr(4, 4), "\x04\x01\0\0"s);
}

TEST(CommitArguments, passTheIdOnlyWhenThereIsNone)
{
    EXPECT_EQ(formatCommitArguments(42, L"C:\\a b.mcam"), L"--commit \"C:\\a b.mcam\"");
    EXPECT_EQ(formatCommitArguments(0, L"C:\\a.mcam"), L"--commit \"C:\\a.mcam\"");
    EXPECT_EQ(formatCommitArguments(0xFFFFFFFF, L"C:\\a.mcam"),
              L"--commit \"C:\\a.mcam\" --id 4294967295");
}
