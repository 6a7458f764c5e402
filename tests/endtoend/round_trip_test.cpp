// Complete round trip: the Companion sends a part, the host changes, saves and commits it with the
// shipped add-in, and the Companion stores the next version.
#include "endtoend/companion_commit_fixture.h"
#include "support/host_program.h"

#include <algorithm>

using namespace testing_support;

namespace {

constexpr unsigned finishingPassCommand = 41108; // in the host's Edit menu
constexpr unsigned saveExportCommand = 42002;    // in the host's Add-in menu: m_save

class RoundTrip : public CommitFixture {
protected:
    std::string saves(int times) const
    {
        std::string lines;
        for (int i = 0; i < times; ++i)
            lines += "call m_save 0\n";
        return lines;
    }
};

} // namespace

TEST_F(RoundTrip, returnsAPartAsTheNextVersion)
{
    const CompanionProgram companion(installation);
    const HostProgram host(installation, "wait-for m_notify(37) 60000\nquit\n");
    ASSERT_TRUE(host.waitForCommandFile());
    ASSERT_TRUE(waitUntil([&] { return host.window() != nullptr; }));
    ASSERT_EQ(companion.run(L"--send bracket"), carriedOut);
    ASSERT_TRUE(host.waitForTrace(L"CFile_DoFileSave("));
    host.command(finishingPassCommand);
    host.command(saveExportCommand);
    ASSERT_TRUE(host.waitForTrace(L"ui m_save(0) -> 0"));
    ASSERT_TRUE(waitForVersion(companion, L"bracket", 2));

    const std::wstring file = installation.path(L"work\\bracket.mcam");
    EXPECT_NE(companion.lastLine(L"commit file=").find(L"\"" + file + L"\" id=17 from=torvapdm-"),
              std::wstring::npos);
    EXPECT_EQ(companion.lastLine(L"version "),
              L"version name=\"bracket\" version=2 number=17 picture=yes");
    // The Companion may have polled before the notice arrived.
    EXPECT_TRUE(companion.waitForLog(L"commit-notice id=17 file=\"" + file + L'"'));
    const std::string first = libraryBytes(L"bracket\\v1.mcam").value_or("");
    const std::string second = libraryBytes(L"bracket\\v2.mcam").value_or("");
    EXPECT_EQ(first.find("id = 11\n"), first.npos);
    EXPECT_NE(second.find("id = 11\n"), second.npos);
    EXPECT_EQ(libraryBytes(L"bracket\\v2.bmp").value_or("").substr(0, 2), "BM");
    EXPECT_EQ(count(host.trace(), L"message-box"), 0u);
    host.sendEvent(37);
    EXPECT_EQ(host.process().waitForExit(), 0u);
}

TEST_F(RoundTrip, losesNoneOf200Commits)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const std::wstring part = makePart(L"first.mcam", "mastercam part 1\n");
    const std::wstring otherPart = makePart(L"second.mcam", "mastercam part 1\n");
    const HostProgram host(installation, "set geo_filename " + toUtf8(part) + '\n' + saves(100) +
                                             "wait-for m_notify(37) 60000\n" + saves(100) +
                                             "quit\n");
    ASSERT_TRUE(host.waitForTrace(L"ui m_save(0) -> 0", 100));
    const HostProgram other(installation,
                            "set geo_filename " + toUtf8(otherPart) + '\n' + saves(10) + "quit\n",
                            L"other");
    EXPECT_EQ(other.process().waitForExit(), 0u);
    host.sendEvent(37);
    ASSERT_TRUE(host.waitForTrace(L"ui m_save(0) -> 0", 200));
    EXPECT_EQ(host.process().waitForExit(), 0u);
    ASSERT_TRUE(companion.waitForLog(L"version name=", 210));

    const auto committed = [](const std::wstring& file) {
        return L"commit file=\"" + file + L"\" id=0 from=torvapdm-";
    };
    Lines seen = linesThatStart(companion.log(), L"commit file=");
    for (std::wstring& line : seen)
        line = line.substr(0, line.find(L"torvapdm-") + 9);
    Lines expected(210, committed(part));
    std::fill_n(expected.begin() + 100, 10, committed(otherPart));
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(companion.count(L"commit-failed"), 0u);
    EXPECT_TRUE(libraryBytes(L"first\\v200.mcam").has_value());
    EXPECT_TRUE(libraryBytes(L"second\\v10.mcam").has_value());
}
