// Posting NC programs.
#include "support/host_fixture.h"

using namespace testing_support;

namespace {

constexpr UINT postCommand = 41107;

const char plate[] = R"(mastercam part 1

[part]
title = Plate 40 (first)

[tool]
number = 3
spindle-speed = 2800

[operation]
id = 1
type = 2
depth = -5
nci-name = C:\Jobs\PLATE.nci
tool.number = 3
tool.length-offset = 13
tool.feed-rate = 900
tool.comment = End mill 8
path = 0 0 10.12345 0 10 20

[operation]
id = 2
type = 4
depth = -12
nci-name = PLATE.nci
tool.number = 4
tool.feed-rate = 0.5
path = 5 5 6 6

[operation]
id = 3
nci-name = OTHER.nci

[operation]
id = 4
)";

class Posting : public HostFixture {
protected:
    void post(const std::string& part)
    {
        const std::wstring path = makePart();
        writeBytes(path, part);
        ASSERT_TRUE(standin::putPart(path));
        standin::setState("nc_prefix", folder);
        SendMessageW(FindWindowW(L"Mastercam main window", nullptr), WM_COMMAND, postCommand, 0);
    }
    std::string program(const std::wstring& name) const
    {
        return readBytes(folder + name).value_or("none");
    }
    const std::wstring folder = installation.path(L"tmp\\posted\\");
};

} // namespace

TEST_F(Posting, writesOneProgramPerNciName)
{
    post(plate);
    EXPECT_EQ(program(L"PLATE.NC"), "%\r\nO2\r\n(PLATE)\r\n(Plate 40  first )\r\n"
                                    "G21 G17 G90 G40 G80\r\n"
                                    "(End mill 8)\r\nT3 M6\r\nS2800 M3\r\nG43 H13 Z10\r\n"
                                    "G0 X0 Y0\r\nZ2\r\nG1 Z-5 F900\r\nX10.123 Y0\r\nX10 Y20\r\n"
                                    "G0 Z10\r\nM5\r\n"
                                    "()\r\nT4 M6\r\nS0 M3\r\nG43 H0 Z10\r\n"
                                    "G81 X5 Y5 Z-12 R2 F0.5\r\nX6 Y6\r\nG80\r\nM5\r\n"
                                    "M30\r\n%\r\n");
    EXPECT_EQ(program(L"OTHER.NC").substr(0, 17), "%\r\nO1\r\n(OTHER)\r\n(");
    EXPECT_EQ(program(L".NC"), "none");
    EXPECT_EQ(standin::shownNote(), L"Posted 2 NC programs: " + folder + L"OTHER.NC, \u2026");
}

TEST_F(Posting, usesHostSuffix)
{
    standin::setState("nc_suffix", L".nc1");
    post(plate);
    EXPECT_NE(program(L"PLATE.nc1"), "none");
    EXPECT_EQ(program(L"PLATE.NC"), "none");
}

TEST_F(Posting, countsOneProgram)
{
    post("mastercam part 1\n\n[operation]\nid = 1\nnci-name = A.nci\n");
    EXPECT_EQ(standin::shownNote(), L"Posted 1 NC program: " + folder + L"A.NC");
}

TEST_F(Posting, writesNothingForEmptyPart)
{
    post("mastercam part 1\n");
    EXPECT_FALSE(readBytes(folder).has_value());
    EXPECT_EQ(GetFileAttributesW((folder + L"PLATE.NC").c_str()), INVALID_FILE_ATTRIBUTES);
}
