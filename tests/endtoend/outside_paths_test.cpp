// Paths from files written by other programs, with the shipped add-in in the host's process: which
// files they reach, and that no other file is written or removed.
#include "support/host_program.h"
#include "support/companion_double.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>

using namespace testing_support;

namespace {

constexpr wchar_t notThere[] = LR"(ui message-box("TORVA ZEM", "The file does not exist."))";

// All files below the folder with their content, except files that every run rewrites.
std::map<std::wstring, std::string> contentOf(const std::wstring& folder)
{
    std::map<std::wstring, std::string> content;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::wstring name = entry.path().filename().wstring();
        if (entry.is_regular_file() && name != L"mcxlog.txt" && name != L"host.trace")
            content[entry.path().wstring()] = readBytes(entry.path().wstring()).value_or("");
    }
    return content;
}

class OutsidePath : public ::testing::Test {
protected:
    // Writes as soon as the last request has been read.
    static bool send(const HostProgram& host, const std::string& path)
    {
        return waitUntil([&] { return readBytes(host.commandFile()) == ""; }) &&
               writeRequest(host.commandFile(), openRequest(17, path));
    }
    // Waits until the trace contains this line this many times; false on timeout.
    static bool waitForTimes(const HostProgram& host, const std::wstring& line, size_t times)
    {
        return waitUntil([&] { return count(host.trace(), line) == times; });
    }

    Installation installation{Registry::ofTheUser};
};

// The host's message boxes are answered while its script runs.
constexpr char untilEnded[] = "wait-for (never) 600000\n";

// A folder registered as the installation folder in which nothing can be created.
class OutsideFolder : public OutsidePath, public ::testing::WithParamInterface<const wchar_t*> {};

} // namespace

TEST_F(OutsidePath, isRefusedWithoutAFile)
{
    writeBytes(installation.path(L"a.mcam"), "");
    const std::string file = toUtf8(installation.path(L"a.mcam"));
    const HostProgram host(installation, untilEnded);
    ASSERT_TRUE(host.waitForCommandFile());
    const auto before = contentOf(installation.root());
    size_t refused = 0;
    for (const std::string& path :
         {std::string(R"(..\..\..\outside.mcam)"), std::string(R"(\\server.invalid\share\x.mcam)"),
          std::string("CON"), std::string("NUL.mcam"), std::string("COM1"),
          std::string(R"(\\.\pipe\nobodys)"), std::string(R"(\\.\C:)"),
          std::string(R"(\\?\C:\nowhere\x.mcam)"), file + ":stream", file + '"', file + "|calc",
          std::string(R"(C:\*.mcam)"), toUtf8(installation.root()), std::string("https://a/b")}) {
        ASSERT_TRUE(send(host, path));
        EXPECT_TRUE(waitForTimes(host, notThere, ++refused)) << path;
    }
    EXPECT_EQ(count(host.trace(), L"DoFileOpen"), 0u);
    EXPECT_EQ(contentOf(installation.root()), before);
}

TEST_F(OutsidePath, reachesTheHostUnchanged)
{
    writeBytes(installation.path(L"a.mcam"), "");
    const std::wstring root = installation.root();
    const HostProgram host(installation, untilEnded);
    ASSERT_TRUE(host.waitForCommandFile());
    for (const std::wstring& path :
         {root + L"\\temp\\..\\a.mcam", root + L"/a.mcam", L"\\\\?\\" + root + L"\\a.mcam",
          L"\\\\.\\" + root + L"\\a.mcam"}) {
        ASSERT_TRUE(send(host, toUtf8(path)));
        EXPECT_TRUE(host.waitForTrace(L"ui DoFileOpen(\"" + path + L"\", ")) << toUtf8(path);
        EXPECT_TRUE(host.waitForTrace(L"ui CFile_DoFileSave(\"" + path + L"\", ")) << toUtf8(path);
    }
    EXPECT_EQ(count(host.trace(), notThere), 0u);
}

TEST_P(OutsideFolder, leavesTheHostWorking)
{
    const std::wstring part = installation.path(L"a.mcam");
    writeBytes(part, "");
    registerInstallation(GetParam());
    const HostProgram host(installation, "part " + toUtf8(part) +
                                             "\ncall m_load 0\ncall m_save 0\nnotify 5\n"
                                             "call importNCqueue\nquit\n");
    const auto before = contentOf(installation.root());
    EXPECT_EQ(host.process().waitForExit(), 0u);
    EXPECT_EQ(contentOf(installation.root()), before);
    EXPECT_EQ(count(host.trace(), L"Failed to start TORVA ZEM."), 2u);
    EXPECT_EQ(count(host.trace(), L"ui m_close(0) -> 0"), 1u);
}

INSTANTIATE_TEST_SUITE_P(AsRegistered, OutsideFolder,
                         ::testing::Values(LR"(..\..)", LR"(\\server.invalid\share)",
                                           LR"(\\.\pipe\nobodys)", LR"(\\.\NUL)", L"CON",
                                           LR"(\\?\C:\nowhere)", LR"(C:\nowhere:stream)", L"*"));
