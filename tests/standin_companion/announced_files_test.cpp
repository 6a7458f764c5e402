// How the Companion processes the files announced by notices, without its windows.
#include "peer/files.h"
#include "standin/companion/app/announced_files.h"

#include "support/bytes.h"
#include "support/installation.h"
#include "support/system_calls.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace companion;
using namespace testing_support;

namespace {

constexpr char nextQueue[] = "NCPATH|3|C:\\NEXT.NC|G\r\n";

// The queue file that is overwritten when the Companion checks an NC program, if not empty.
std::wstring queueOfTheHost;
std::vector<std::wstring> lookedAt;

DWORD WINAPI watchedAttributes(LPCWSTR path)
{
    lookedAt.emplace_back(path);
    if (!queueOfTheHost.empty())
        writeBytes(queueOfTheHost, nextQueue);
    return systems(&watchedAttributes, "GetFileAttributesW")(path);
}

int openings = 0;

HANDLE WINAPI countedOpening(LPCWSTR path, DWORD access, DWORD share,
                             LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                             HANDLE like)
{
    openings += std::wstring_view(path).ends_with(L"companion.log") ? 1 : 0;
    return systems(&countedOpening, "CreateFileW")(path, access, share, security, disposition,
                                                   flags, like);
}

class AnnouncedFiles : public ::testing::Test {
protected:
    AnnouncedFiles() { log.path = installation.path(L"sys\\companion.log"); }

    std::wstring write(const std::wstring& name, const std::string& bytes) const
    {
        const std::wstring file = installation.path(name);
        writeBytes(file, bytes);
        return file;
    }
    std::optional<ReceivedQueue> receive(const std::wstring& file)
    {
        return receiveQueue(log, installation.root(), file);
    }
    Lines logged() const
    {
        constexpr size_t dateTimeAndSpace = 24;
        Lines lines = linesOf(fromUtf8(readBytes(log.path).value_or("")));
        for (std::wstring& line : lines)
            line.erase(0, dateTimeAndSpace);
        return lines;
    }

    const Installation installation;
    EventLog log;
};

using QueueFile = AnnouncedFiles;
using ToolFile = AnnouncedFiles;
using SmallFile = AnnouncedFiles;

} // namespace

TEST_F(QueueFile, staysWhenTheHostWritesItMeanwhile)
{
    const std::wstring file = write(L"temp\\ncqueue-17.txt", "NCPATH|3|C:\\FIRST.NC|G\r\n");
    queueOfTheHost = file;
    redirectCalls(&watchedAttributes, "GetFileAttributesW", &watchedAttributes);
    const auto queue = receive(file);
    ASSERT_TRUE(queue.has_value());
    ASSERT_EQ(queue->programs.size(), 1u);
    EXPECT_EQ(queue->programs[0].file, L"C:\\FIRST.NC");
    EXPECT_EQ(readBytes(file), nextQueue);
    EXPECT_EQ(readBytes(file + L".taken"), std::nullopt);
}

TEST_F(QueueFile, isDeletedHoweverItsPathIsSpelled)
{
    const std::wstring file = installation.path(L"temp\\ncqueue-17.txt");
    std::wstring slashes = file;
    std::ranges::replace(slashes, L'\\', L'/');
    for (const std::wstring& spelled : {file, slashes, installation.path(L"TEMP\\ncqueue-17.txt"),
                                        installation.path(L"tmp\\..\\temp\\ncqueue-17.txt")}) {
        writeBytes(file, nextQueue);
        EXPECT_TRUE(receive(spelled).has_value());
        EXPECT_EQ(readBytes(file), std::nullopt);
    }
}

TEST_F(QueueFile, staysInAnyOtherFolder)
{
    for (const wchar_t* name : {L"tmp\\ncqueue-17.txt", L"ncqueue-17.txt",
                                L"temp\\..\\commit\\ncqueue-17.txt", L"temp\\other.txt"}) {
        const std::wstring file = write(name, nextQueue);
        const auto queue = receive(file);
        ASSERT_TRUE(queue.has_value());
        EXPECT_EQ(queue->programs.size(), 1u);
        EXPECT_EQ(readBytes(file), nextQueue);
    }
}

TEST_F(QueueFile, staysWhileAHostHasItOpen)
{
    const std::wstring file = write(L"temp\\ncqueue-17.txt", nextQueue);
    const HANDLE host = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(host, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(receive(file).has_value());
    CloseHandle(host);
    EXPECT_EQ(readBytes(file), nextQueue);
}

TEST_F(QueueFile, logsTwentyBadLinesAndACount)
{
    const std::wstring file = write(L"temp\\ncqueue-17.txt", std::string(300000, '\n') + nextQueue);
    redirectCalls(&countedOpening, "CreateFileW", &countedOpening);
    EXPECT_TRUE(receive(file).has_value());
    EXPECT_EQ(openings, 1);
    const Lines lines = logged();
    ASSERT_EQ(lines.size(), 22u);
    EXPECT_EQ(lines[0], L"nc-queue-line-bad line=1");
    EXPECT_EQ(lines[19], L"nc-queue-line-bad line=20");
    EXPECT_EQ(lines[20], LR"(nc-program number=3 file="C:\NEXT.NC" bytes=-1 group="G")");
    EXPECT_EQ(lines[21], L"nc-queue-lines-bad lines=299980");
    EXPECT_EQ(takeNewRows(log).size(), 22u);
}

TEST_F(QueueFile, logsEachOfTwentyBadLines)
{
    receive(write(L"temp\\ncqueue-17.txt", std::string(20, '\n')));
    EXPECT_EQ(logged().size(), 20u);
    EXPECT_EQ(logged().back(), L"nc-queue-line-bad line=20");
}

TEST_F(QueueFile, contactsNoOtherComputer)
{
    redirectCalls(&watchedAttributes, "GetFileAttributesW", &watchedAttributes);
    const auto queue =
        receive(write(L"temp\\ncqueue-17.txt", "NCPATH|3|\\\\server\\share\\A.NC|G\r\n"
                                               "NCPATH|3|//server/share/B.NC|G\r\n"
                                               "NCPATH|3|C:\\C.NC|G\r\n"));
    ASSERT_TRUE(queue.has_value());
    ASSERT_EQ(queue->programs.size(), 3u);
    EXPECT_EQ(queue->programs[0].bytes, notRead);
    EXPECT_EQ(queue->programs[1].bytes, notRead);
    EXPECT_EQ(queue->programs[2].bytes, -1);
    EXPECT_EQ(lookedAt, std::vector<std::wstring>{L"C:\\C.NC"});
}

TEST_F(ToolFile, logsTwentyBadLinesAndACount)
{
    write(L"temp\\tool-17.txt", std::string(300000, '\n'));
    redirectCalls(&countedOpening, "CreateFileW", &countedOpening);
    EXPECT_TRUE(receiveTools(log, installation.root(), 17).has_value());
    EXPECT_EQ(openings, 1);
    const Lines lines = logged();
    ASSERT_EQ(lines.size(), 21u);
    EXPECT_EQ(lines[19], L"tool-record-bad line=20");
    EXPECT_EQ(lines[20], L"tool-records-bad lines=299980");
}

TEST_F(SmallFile, isReadOnlyFromADisk)
{
    const wchar_t* const name = L"\\\\.\\pipe\\torvapdm-small-file-test";
    const HANDLE pipe = CreateNamedPipeW(name, PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_NOWAIT, 1,
                                         0, 0, 0, nullptr);
    ASSERT_NE(pipe, INVALID_HANDLE_VALUE);
    EXPECT_EQ(peer::readFile(name), std::nullopt);
    CloseHandle(pipe);
    EXPECT_EQ(peer::readFile(L"NUL"), std::nullopt);
    EXPECT_EQ(peer::readFile(write(L"temp\\a.txt", "a")), "a");
}
