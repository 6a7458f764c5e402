#include "formats/nc_queue_file.h"

#include <gtest/gtest.h>

using namespace torvapdm;

TEST(ProgramName, excludesFolderAndExtension)
{
    struct Case {
        const wchar_t* nciName;
        const wchar_t* program;
    };
    const Case cases[] = {
        {L"C:\\NC\\PART.nci", L"PART"},
        {L"C:/NC/PART.nci", L"PART"},
        {L"C:\\NC/a\\b/PART.nci", L"PART"},
        {L"PART.nci", L"PART"},
        {L"PART", L"PART"},
        {L"C:\\NC\\PART", L"PART"},
        {L"C:\\NC\\PART.op1.nci", L"PART.op1"},
        {L"C:\\a.b\\PART", L"a"}, // without a dot in the name, the folder's dot is used
        {L"C:\\a.b\\PART.nci", L"PART"},
        {L"C:\\NC\\.nci", L""},
        {L"C:\\NC\\", L""},
        {L".", L""},
        {L"", L""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(programNameOf(c.nciName), c.program) << c.nciName;
}

TEST(QueueEntry, joinsFolderFileAndGroup)
{
    EXPECT_EQ(formatQueueEntry("C:\\NC\\", "PART.NC", "Mill"), "C:\\NC\\PART.NC|Mill");
    EXPECT_EQ(formatQueueEntry("", "P", ""), "P|");
}

TEST(QueueLine, writesTheNcPathNumberInDecimal)
{
    EXPECT_EQ(formatQueueLine(3, "E|G"), "NCPATH|3|E|G\n");
    EXPECT_EQ(formatQueueLine(-1, "E|G"), "NCPATH|-1|E|G\n");
    EXPECT_EQ(formatQueueLine(-2147483647 - 1, ""), "NCPATH|-2147483648|\n");
}
