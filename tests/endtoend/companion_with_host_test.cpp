// Three programs together: the stand-in Companion, the stand-in host, and the shipped add-in in the
// host.
#include "support/companion_program.h"
#include "support/host_program.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

const std::wstring mill3 = L"C:\\Machines\\Mill 3-axis.mcam-mmd";
const std::wstring mill4 = L"C:\\Machines\\Mill 4-axis.mcam-mmd";
const std::wstring saveCall = L"CFile_DoFileSave(";

class CompanionWithHost : public ::testing::Test {
protected:
    CompanionWithHost() { installCompanionWithLibrary(installation); }

    std::wstring workFile(const std::wstring& name) const
    {
        return installation.path(L"work\\" + name + L".mcam");
    }
    std::optional<std::string> libraryPart(const std::wstring& name) const
    {
        return readBytes(installation.path(L"library\\" + name + L"\\v1.mcam"));
    }
    Lines openingOf(const std::wstring& name, const std::wstring& machine) const
    {
        const std::wstring path = L"\"" + workFile(name) + L"\"";
        return {L"ui DoFileOpen(" + path + L", false, false, 1, true, *, null) -> true",
                L"ui SetActiveMachine(\"" + machine + L"\") -> true",
                L"ui CFile_DoFileSave(" + path + L", main, false, false) -> true"};
    }

    Installation installation{Registry::ofTheUser};
};

// Waits until the Companion can find the host; false on timeout.
bool isReady(const HostProgram& host)
{
    return waitUntil([&] { return host.window() != nullptr; }) && host.waitForCommandFile();
}

std::wstring idOf(const HostProgram& host)
{
    return std::to_wstring(host.process().id());
}

bool waitForSaves(const HostProgram& host, size_t times)
{
    return waitUntil([&] { return count(host.trace(), saveCall) >= times; });
}

// The open and save calls, in order.
Lines openingCalls(const HostProgram& host)
{
    Lines found;
    for (const std::wstring& line : host.trace())
        for (const wchar_t* call : {L" DoFileOpen(", L" SetActiveMachine(", L" CFile_DoFileSave("})
            if (line.find(call) != line.npos)
                found.push_back(line);
    return found;
}

} // namespace

TEST_F(CompanionWithHost, hasTheHostOpenAndSaveAPart)
{
    const HostProgram host(installation, "wait-for CFile_DoFileSave 30000\n");
    ASSERT_TRUE(isReady(host));
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send bracket"), carriedOut);
    ASSERT_TRUE(waitForSaves(host, 1));
    EXPECT_EQ(openingCalls(host), openingOf(L"bracket", mill3));
    EXPECT_EQ(readBytes(workFile(L"bracket")), libraryPart(L"bracket"));
    EXPECT_FALSE(readBytes(installation.path(L"temp\\mcsettings-17.txt")).has_value());
    ASSERT_TRUE(companion.waitForLog(L"taken "));
    EXPECT_EQ(companion.lastLine(L"sent "),
              L"sent id=17 host=" + idOf(host) + L" file=\"" + workFile(L"bracket") + L"\"");
    EXPECT_EQ(companion.lastLine(L"taken ").rfind(L"taken id=17 host=" + idOf(host), 0), 0u);
    EXPECT_EQ(companion.count(L"host-found host=" + idOf(host)), 1u);
}

TEST_F(CompanionWithHost, getsEveryPartBackUnchanged)
{
    const HostProgram host(installation, "");
    ASSERT_TRUE(isReady(host));
    const CompanionProgram companion(installation);
    size_t sends = 0;
    for (const wchar_t* name : {L"bracket", L"clamp jaw", L"flange", L"pump cover"}) {
        EXPECT_EQ(companion.run(L"--send \"" + std::wstring(name) + L"\""), carriedOut);
        ASSERT_TRUE(waitForSaves(host, ++sends)) << name;
        EXPECT_EQ(readBytes(workFile(name)), libraryPart(name)) << name;
        EXPECT_NE(readBytes(workFile(name)), "") << name;
    }
}

TEST_F(CompanionWithHost, keepsUncommittedChangesOfAWorkingCopy)
{
    const HostProgram host(installation, "");
    ASSERT_TRUE(isReady(host));
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send bracket"), carriedOut);
    ASSERT_TRUE(waitForSaves(host, 1));
    const std::string changed = *libraryPart(L"flange");
    writeBytes(workFile(L"bracket"), changed);
    EXPECT_EQ(companion.run(L"--send bracket"), carriedOut);
    ASSERT_TRUE(waitForSaves(host, 2));
    EXPECT_EQ(readBytes(workFile(L"bracket")), libraryPart(L"bracket"));
    EXPECT_EQ(readBytes(workFile(L"bracket") + L".kept-1"), changed);
    EXPECT_EQ(companion.count(L"kept id=17 file=\"" + workFile(L"bracket") + L".kept-1\""), 1u);
}

TEST_F(CompanionWithHost, sendsTwentyPartsInARow)
{
    const HostProgram host(installation, "");
    ASSERT_TRUE(isReady(host));
    const CompanionProgram companion(installation);
    Lines expectedCalls;
    Lines expectedIds;
    for (size_t i = 1; i <= 20; ++i) {
        const std::wstring name = i % 2 ? L"clamp jaw" : L"pump cover";
        const std::wstring id = std::to_wstring(100 + i);
        ASSERT_EQ(companion.run(L"--send \"" + name + L"\" --id " + id), carriedOut);
        ASSERT_TRUE(companion.waitForLog(L"taken ", i)) << i;
        ASSERT_TRUE(waitForSaves(host, i)) << i;
        const Lines calls = openingOf(name, i % 2 ? mill3 : mill4);
        expectedCalls.insert(expectedCalls.end(), calls.begin(), calls.end());
        expectedIds.push_back(id);
    }
    EXPECT_EQ(openingCalls(host), expectedCalls);
    Lines takenIds;
    for (const std::wstring& line : companion.log())
        if (line.rfind(L"taken id=", 0) == 0)
            takenIds.push_back(line.substr(9, 3));
    EXPECT_EQ(takenIds, expectedIds);
}

TEST_F(CompanionWithHost, startsANewFileInTheHost)
{
    const HostProgram host(installation, "wait-for OnFileNew 30000\nquit\n");
    ASSERT_TRUE(isReady(host));
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--new-file"), carriedOut);
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(fromOtherThreads(host.trace()),
              (Lines{L"other set_db_unchanged()",
                     LR"(other post_FT_command("Mastercam", "OnFileNew"))"}));
    EXPECT_TRUE(companion.waitForLog(L"new-file id=0 host=" + idOf(host)));
    EXPECT_TRUE(companion.waitForLog(L"request=new-file"));
}

TEST_F(CompanionWithHost, checksAPartInAgain)
{
    const HostProgram host(installation, "wait-for CFile_DoFileSave 30000\n"
                                         "wait-for OnFileNew 30000\nquit\n");
    ASSERT_TRUE(isReady(host));
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send flange"), carriedOut);
    ASSERT_TRUE(waitForSaves(host, 1));
    EXPECT_EQ(companion.run(L"--check-in"), carriedOut);
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(fromOtherThreads(host.trace()),
              (Lines{L"other m_fclose(null, 0, null)", L"other set_db_unchanged()",
                     LR"(other post_FT_command("Mastercam", "OnFileNew"))"}));
    EXPECT_TRUE(
        companion.waitForLog(L"check-in id=0 host=" + idOf(host) + L" name=\"flange.mcam\""));
}

TEST_F(CompanionWithHost, waitsForABusyHost)
{
    const HostProgram host(installation, "set main_window_enabled false\n"
                                         "show main_window_enabled\nwait-for go 30000\n");
    ASSERT_TRUE(isReady(host));
    ASSERT_TRUE(host.waitForTrace(LR"(main_window_enabled = "false")"));
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send bracket"), carriedOut);
    EXPECT_TRUE(companion.waitForLog(L"taken id=17"));
    EXPECT_FALSE(waitUntil([&] { return !openingCalls(host).empty(); }, 300));
    EnableWindow(host.window(), TRUE);
    ASSERT_TRUE(waitForSaves(host, 1));
    EXPECT_EQ(openingCalls(host), openingOf(L"bracket", mill3));
}

TEST_F(CompanionWithHost, sendsToTheHostThatIsNamed)
{
    const HostProgram one(installation, "", L"one");
    const HostProgram two(installation, "", L"two");
    ASSERT_TRUE(isReady(one) && isReady(two));
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send flange --host " + idOf(two)), carriedOut);
    ASSERT_TRUE(waitForSaves(two, 1));
    EXPECT_EQ(companion.run(L"--send bracket --host " + idOf(one)), carriedOut);
    ASSERT_TRUE(waitForSaves(one, 1));
    EXPECT_EQ(openingCalls(one), openingOf(L"bracket", mill3));
    EXPECT_EQ(openingCalls(two), openingOf(L"flange", mill3));
}

TEST_F(CompanionWithHost, logsHostsThatComeAndGo)
{
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    const HostProgram host(installation, "");
    EXPECT_TRUE(companion.waitForLog(L"host-found host=" + idOf(host)));
    ASSERT_TRUE(isReady(host));
    PostMessageW(host.window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(companion.waitForLog(L"host-gone host=" + idOf(host)));
}

TEST_F(CompanionWithHost, reportsAnUnopenablePartToTheUser)
{
    writeBytes(installation.path(L"library\\bracket\\v1.mcam"), "no part");
    const HostProgram host(installation, "wait-for message-box 30000\nquit\n");
    ASSERT_TRUE(isReady(host));
    const CompanionProgram companion(installation);
    EXPECT_EQ(companion.run(L"--send bracket"), carriedOut);
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(count(host.trace(), LR"(message-box("TORVA ZEM", "Failed to load file."))"), 1u);
    EXPECT_EQ(readBytes(workFile(L"bracket")), "no part");
}
