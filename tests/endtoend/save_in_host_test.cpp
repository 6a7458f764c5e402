// Saving and committing in the host's process.
#include "support/host_program.h"
#include "support/companion_double.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace testing_support;

namespace {

const std::wstring commandLine = L"ui m_save(0) -> 0";

// The test's process acts as the Companion: it receives the records.
class SaveInHost : public ::testing::Test {
protected:
    SaveInHost()
    {
        companion.holdSemaphore();
        companion.showWindow();
    }
    std::string makePart(const std::string& name) const
    {
        const std::wstring path = installation.path(fromUtf8(name));
        writeBytes(path, "");
        return toUtf8(path);
    }

    // Waits long enough for the flow to end, or for a growing stack to overflow.
    static bool returnsAgain(const HostProgram& host, size_t returns)
    {
        const auto hasEnded = [&] {
            return !host.process().isRunning() || count(host.trace(), L"m_save") > returns;
        };
        return waitUntil(hasEnded, 3000) || !host.process().isRunning();
    }
    static void expectNoReturn(const HostProgram& host)
    {
        ASSERT_TRUE(host.waitForTrace(L"ui NCPrefix(null)"));
        EXPECT_FALSE(returnsAgain(host, 0));
    }

    Installation installation{Registry::ofTheUser};
    CompanionDouble companion;
    const std::wstring commitFile =
        installation.path(L"temp\\torvapdm-" + std::to_wstring(GetCurrentProcessId()) + L".dat");
};

std::uint32_t numberAt(const std::string& bytes, size_t offset)
{
    std::uint32_t number = 0;
    for (size_t i = 4; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes.at(offset + i));
    return number;
}

// The file names of the records, in order; all ids must be 0. Stops at the first unexpected byte.
Lines namesOf(const std::string& records)
{
    Lines names;
    for (size_t offset = 0; offset + 8 <= records.size();) {
        const size_t length = numberAt(records, offset + 4);
        if (numberAt(records, offset) != 0 || offset + 8 + 2 * length > records.size())
            break;
        std::wstring name;
        for (size_t i = 0; i < length; ++i)
            name +=
                static_cast<wchar_t>(static_cast<unsigned char>(records[offset + 8 + 2 * i]) |
                                     static_cast<unsigned char>(records[offset + 9 + 2 * i]) << 8);
        names.push_back(name);
        offset += 8 + 2 * length;
    }
    return names;
}

std::string repeated(const std::string& line, int times)
{
    std::string lines;
    for (int i = 0; i < times; ++i)
        lines += line;
    return lines;
}

} // namespace

TEST_F(SaveInHost, neverReturnsFromASaveAfterTheHosts)
{
    const std::string part = makePart("a.mcam");
    const HostProgram host(installation, "notify 5\nset geo_filename " + part +
                                             "\ncall m_save 0\nshow geo_filename\n");
    expectNoReturn(host);
    EXPECT_FALSE(readBytes(commitFile).has_value());
}

TEST_F(SaveInHost, neverReturnsForAFourCharacterName)
{
    const HostProgram host(installation,
                           "set geo_filename abc\nnotify 5\ncall m_save 0\n"
                           "notify 3\nnotify 5\nset geo_filename abcd\ncall m_tools 0\n"
                           "call m_save 0\n");
    // With three characters m_save returns, so the commands after it run.
    ASSERT_TRUE(host.waitForTrace(L"ui m_tools(0)"));
    EXPECT_EQ(count(host.trace(), commandLine), 1u);
    ASSERT_TRUE(waitUntil([&] { return count(host.trace(), L"ui NCPrefix(null)") == 2; }));
    EXPECT_FALSE(returnsAgain(host, 1));
}

TEST_F(SaveInHost, neverReturnsAfterNamingAnUntitled)
{
    const std::string part = toUtf8(installation.path(L"new.mcam"));
    const HostProgram host(installation,
                           "set geo_filename \nsave-dialog " + part + "\ncall m_save 0\n");
    expectNoReturn(host);
    EXPECT_EQ(count(host.trace(), L"ui m_notify(5) -> 0"), 1u);
    EXPECT_TRUE(readBytes(fromUtf8(part)).has_value());
}

TEST_F(SaveInHost, endsWhenTheHostQuits)
{
    const HostProgram host(installation, "set geo_filename \nsave-dialog \ncall m_save 0\n");
    EXPECT_EQ(host.process().waitForExit(), 0u);
    const Lines lines = host.trace();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], commandLine);
    EXPECT_EQ(lines.back(), L"ui m_close(0) -> 0");
    EXPECT_EQ(count(lines, L"message-box"), 0u);
}

TEST_F(SaveInHost, commits200TimesBetweenTwoHosts)
{
    const std::string part = makePart("first.mcam");
    const std::string otherPart = makePart("second.mcam");
    const std::string hundred = repeated("call m_save 0\n", 100);
    const HostProgram host(installation, "set geo_filename " + part + '\n' + hundred +
                                             "wait-for m_notify(37) 60000\n" + hundred + "quit\n");
    ASSERT_TRUE(host.waitForTrace(commandLine, 100));
    const HostProgram other(installation,
                            "set geo_filename " + otherPart + '\n' +
                                repeated("call m_save 0\n", 10) + "quit\n",
                            L"other");
    EXPECT_EQ(other.process().waitForExit(), 0u);
    EXPECT_TRUE(host.sendEvent(37));
    ASSERT_TRUE(host.waitForTrace(commandLine, 200));
    EXPECT_EQ(host.process().waitForExit(), 0u);

    Lines expected(210, fromUtf8(part));
    std::fill_n(expected.begin() + 100, 10, fromUtf8(otherPart));
    EXPECT_EQ(namesOf(readBytes(commitFile).value_or("")), expected);
}
