#include "peer/text.h"
#include "peer/nc_queue_file.h"

#include <gtest/gtest.h>

#include <initializer_list>

using namespace peer;

namespace {

void expectEntry(const std::optional<QueueEntry>& entry, std::int32_t number,
                 const std::string& program, const std::string& group)
{
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->pathNumber, number);
    EXPECT_EQ(entry->program, program);
    EXPECT_EQ(entry->group, group);
}

} // namespace

TEST(PeerNcQueue, containsOneProgramALine)
{
    const QueueLines lines = parseNcQueue("NCPATH|-1|C:\\NC\\A B.NC|Setup 1\r\n"
                                          "NCPATH|2147483647|D:\\\xC4.NC|\xD6zz\r\n"
                                          "NCPATH|0|PLATE.NC|Setup 2");
    ASSERT_EQ(lines.size(), 3u);
    expectEntry(lines[0], -1, "C:\\NC\\A B.NC", "Setup 1");
    expectEntry(lines[1], 2147483647, "D:\\\xC4.NC", "\xD6zz");
    expectEntry(lines[2], 0, "PLATE.NC", "Setup 2");
}

TEST(PeerNcQueue, allowsBarsInTheGroup)
{
    const QueueLines lines = parseNcQueue("NCPATH|3|C:\\A.NC|left|right|\r\n"
                                          "NCPATH|3|C:\\B.NC|\r\n"
                                          "NCPATH|3|C:\\C.NC||\r\n");
    ASSERT_EQ(lines.size(), 3u);
    expectEntry(lines[0], 3, "C:\\A.NC", "left|right|");
    expectEntry(lines[1], 3, "C:\\B.NC", "");
    expectEntry(lines[2], 3, "C:\\C.NC", "|");
}

TEST(PeerNcQueue, keepsThePositionOfBadLines)
{
    const QueueLines lines = parseNcQueue("\r\nNCPATH|1|C:\\A.NC|G\r\nsomething\r\n");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_FALSE(lines[0].has_value());
    expectEntry(lines[1], 1, "C:\\A.NC", "G");
    EXPECT_FALSE(lines[2].has_value());
}

TEST(PeerNcQueue, rejectsOtherLines)
{
    for (const char* line : {
             "NCPATH",
             "NCPATH|1",
             "NCPATH|1|C:\\A.NC",
             "NCPATH|1||G",
             "NCPATH||C:\\A.NC|G",
             "NCPATH|+1|C:\\A.NC|G",
             "NCPATH|01|C:\\A.NC|G",
             "NCPATH|-0|C:\\A.NC|G",
             "NCPATH|1 |C:\\A.NC|G",
             "NCPATH|2147483648|C:\\A.NC|G",
             "NCPATH|-2147483649|C:\\A.NC|G",
             "NCPATHS|1|C:\\A.NC|G",
             "ncpath|1|C:\\A.NC|G",
             " NCPATH|1|C:\\A.NC|G",
             "|NCPATH|1|C:\\A.NC|G",
         })
        EXPECT_FALSE(parseNcQueue(line).front().has_value()) << line;
}

TEST(PeerNcQueue, rejectsControlCharacters)
{
    for (const char control : {'\0', '\1', '\t', '\r', '\x1F', '\x7F'})
        for (const char* const start : {"NCPATH|1|C:\\A", "NCPATH|1|C:\\A.NC|G"}) {
            const std::string line = start + std::string(1, control) + ".NC|G";
            EXPECT_FALSE(parseNcQueue(line).front().has_value()) << static_cast<int>(control);
        }
}

TEST(PeerNcQueue, mayBeEmpty)
{
    EXPECT_TRUE(parseNcQueue("").empty());
}

TEST(PeerQueueFileName, containsTheRequestId)
{
    for (const wchar_t* name : {L"ncqueue-17.txt", L"ncqueue-0.txt", L"ncqueue--3.txt"})
        EXPECT_TRUE(isQueueFileName(name)) << name;
    for (const wchar_t* name :
         {L"ncqueue-.txt", L"ncqueue-17.txt.bak", L"my ncqueue-17.txt", L"ncqueue-a.txt",
          L"ncqueue-17", L"bracket.mcam", L"", L"ncqueue-99999999999.txt"})
        EXPECT_FALSE(isQueueFileName(name)) << name;
}
