// What is seen of exchange files and logs with each look.
#include "peer/bookmark.h"
#include "peer/commit_record.h"
#include "peer/debug_log.h"
#include "peer/exchange_paths.h"
#include "peer/text.h"
#include "support/bytes.h"
#include "support/installation.h"
#include "tools/zemlink/session/command_files.h"
#include "tools/zemlink/session/commit_files.h"
#include "tools/zemlink/session/log_tail.h"
#include "tools/zemlink/session/observer.h"
#include "tools/zemlink/session/whole_files.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace zemlink;
using namespace testing_support;

namespace {

using Texts = std::vector<std::string>;

// Makes the file longer; the new bytes are 0 and use no space on the disk.
void extendFile(const std::wstring& path, LONGLONG size)
{
    const peer::OwnHandle file = peer::ownFile(CreateFileW(
        path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER end{};
    end.QuadPart = size;
    ASSERT_TRUE(SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN) && SetEndOfFile(file.get()));
}

size_t countOf(const std::vector<ExchangeEvent>& events, EventKind kind)
{
    return static_cast<size_t>(std::ranges::count(events, kind, &ExchangeEvent::kind));
}

class LogTailTest : public testing::Test {
protected:
    const Installation installation;
    const std::wstring path = installation.path(L"sys\\mcxlog.txt");
    LogTail log{path};
};

// The time of the last change, in units of 100 ns.
LONGLONG writeTimeOf(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    EXPECT_TRUE(GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data));
    const FILETIME& time = data.ftLastWriteTime;
    return static_cast<LONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

void setWriteTime(const std::wstring& path, LONGLONG units)
{
    const peer::OwnHandle file = peer::ownFile(
        CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    const FILETIME time{static_cast<DWORD>(units), static_cast<DWORD>(units >> 32)};
    ASSERT_TRUE(SetFileTime(file.get(), nullptr, nullptr, &time));
}

constexpr LONGLONG millisecond = 10'000;

// A process that does nothing until it is ended.
class SuspendedProcess {
public:
    SuspendedProcess()
    {
        std::wstring command = L"cmd.exe /c exit";
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION made{};
        EXPECT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE,
                                   CREATE_SUSPENDED, nullptr, nullptr, &startup, &made));
        process_.reset(made.hProcess);
        thread_.reset(made.hThread);
        id_ = made.dwProcessId;
    }
    ~SuspendedProcess() { end(); }
    SuspendedProcess(const SuspendedProcess&) = delete;
    SuspendedProcess& operator=(const SuspendedProcess&) = delete;

    void end()
    {
        TerminateProcess(process_.get(), 0);
        WaitForSingleObject(process_.get(), INFINITE);
    }
    std::uint32_t id() const { return id_; }

private:
    peer::OwnHandle process_{}, thread_{};
    std::uint32_t id_ = 0;
};

} // namespace

TEST_F(LogTailTest, readsWholeLinesOnce)
{
    writeBytes(path, "a\r\nb\nc");
    EXPECT_EQ(log.newLines(), (Texts{"a\r\n", "b\n"}));
    EXPECT_EQ(log.newLines(), Texts());
    peer::appendToFile(path, "d\n");
    EXPECT_EQ(log.newLines(), Texts{"cd\n"});
    writeBytes(path, "e\n");
    EXPECT_EQ(log.newLines(), Texts{"e\n"});
}

TEST_F(LogTailTest, skipsToTheLastIncompleteLine)
{
    writeBytes(path, "a\nb");
    log.skip();
    peer::appendToFile(path, "c\nd\n");
    EXPECT_EQ(log.newLines(), (Texts{"bc\n", "d\n"}));
}

TEST_F(LogTailTest, followsALogOfAnySize)
{
    extendFile(path, 300'000'000);
    log.skip();
    peer::appendToFile(path, "the end of the long line\na\n");
    EXPECT_EQ(log.newLines(), Texts{"a\n"});
}

TEST_F(LogTailTest, leavesOutTooLongALine)
{
    writeBytes(path, std::string(70'000, 'x'));
    EXPECT_EQ(log.newLines(), Texts());
    peer::appendToFile(path, "x\na\n" + std::string(70'000, 'y') + "\nb\n");
    EXPECT_EQ(log.newLines(), (Texts{"a\n", "b\n"}));
}

TEST_F(LogTailTest, leavesALargeRestForTheNextLook)
{
    const std::string line(60'000, 'x');
    std::string bytes;
    for (int i = 0; i < 300; ++i)
        bytes += line + '\n';
    writeBytes(path, bytes);
    size_t lines = 0;
    for (size_t found; (found = log.newLines().size()) != 0;) {
        EXPECT_LT(found, 300u);
        lines += found;
    }
    EXPECT_EQ(lines, 300u);
}

TEST(CommandFiles, reportsTheEndOfAHostOnce)
{
    const Installation installation;
    SuspendedProcess process;
    writeBytes(installation.commandFile(process.id()), "");
    CommandFiles files(installation.root());
    EXPECT_EQ(countOf(files.look(1000, false), EventKind::hostStarted), 1u);
    EXPECT_EQ(files.processes().size(), 1u);
    process.end();
    EXPECT_EQ(countOf(files.look(2000, false), EventKind::hostEnded), 1u);
    EXPECT_TRUE(files.processes().empty()); // else waiting for it returns at once
    EXPECT_TRUE(files.look(3000, false).empty());
    DeleteFileW(installation.commandFile(process.id()).c_str());
    EXPECT_TRUE(files.look(4000, false).empty());
    EXPECT_TRUE(files.undecidedHosts().empty());
}

// Which of the two happened shows in what followed.
TEST(CommandFiles, reportAsTakenWhatAHostTookBeforeItEnded)
{
    for (const bool isFollowed : {true, false}) {
        const Installation installation;
        const std::wstring path = installation.path(L"temp\\mastercam-4711.dat");
        writeBytes(path, "request");
        CommandFiles files(installation.root());
        files.look(1, false);
        std::filesystem::remove(path);
        EXPECT_EQ(countOf(files.look(2, isFollowed), EventKind::requestTaken),
                  isFollowed ? 1u : 0u);
    }
}

// A host cannot create its file again while another program has the old one open.
TEST(CommandFiles, reportARequestOnceWhenTheFileIsMissingInBetween)
{
    const Installation installation;
    const SuspendedProcess process;
    const std::wstring path = installation.commandFile(process.id());
    writeBytes(path, "request");
    CommandFiles files(installation.root());
    files.look(1, false);
    std::filesystem::remove(path);
    EXPECT_EQ(countOf(files.look(2, true), EventKind::requestTaken), 1u);
    writeBytes(path, "");
    EXPECT_TRUE(files.look(3, true).empty());
    EXPECT_TRUE(files.look(1000, false).empty());
}

TEST(CommandFiles, awaitTheFollowingStepsOfAHostThatHasEnded)
{
    const Installation installation;
    SuspendedProcess process;
    const std::wstring path = installation.commandFile(process.id());
    writeBytes(path, "request");
    CommandFiles files(installation.root());
    files.look(1000, false);
    process.end();
    std::filesystem::remove(path);
    EXPECT_EQ(countOf(files.look(1100, false), EventKind::hostEnded), 1u);
    const std::vector<ExchangeEvent> events = files.look(1105, true);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].kind, EventKind::requestTaken);
    EXPECT_EQ(events[0].at, 1100); // not after its end
    files.look(1200, false);
    EXPECT_TRUE(files.undecidedHosts().empty()); // it is not looked at any more
}

TEST(CommandFiles, forgetAHostThatEndedWithoutTakingItsRequest)
{
    const Installation installation;
    SuspendedProcess process;
    const std::wstring path = installation.commandFile(process.id());
    writeBytes(path, "request");
    CommandFiles files(installation.root());
    files.look(1000, false);
    process.end();
    std::filesystem::remove(path);
    EXPECT_EQ(files.look(1100, false).size(), 1u);
    files.look(3099, false);
    EXPECT_EQ(files.undecidedHosts().size(), 1u);
    EXPECT_TRUE(files.look(3100, false).empty());
    EXPECT_TRUE(files.undecidedHosts().empty());
}

class WatchedRequest : public testing::Test {
protected:
    WatchedRequest()
    {
        writeBytes(path, "");
        known = writeTimeOf(path);
        files.look(1000, false);
    }
    // The look at a file of these bytes and this time.
    std::vector<ExchangeEvent> lookAt(const std::string& bytes, LONGLONG writeTime,
                                      std::int64_t now)
    {
        writeBytes(path, bytes);
        setWriteTime(path, writeTime);
        return files.look(now, false);
    }

    const Installation installation;
    const std::wstring path = installation.path(L"temp\\mastercam-4711.dat");
    CommandFiles files{installation.root()};
    LONGLONG known = 0; // the time of the file that was seen first
};

TEST_F(WatchedRequest, isShownWhenItCameAndWent)
{
    const LONGLONG later = known + 1000 * millisecond;
    EXPECT_TRUE(lookAt("", later, 2000).empty());
    EXPECT_EQ(files.undecidedHosts(), std::vector<std::uint32_t>{4711});
    EXPECT_TRUE(files.look(2029, false).empty());
    const std::vector<ExchangeEvent> events = files.look(2030, false);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].kind, EventKind::requestWritten);
    EXPECT_EQ(events[1].kind, EventKind::requestTaken);
    EXPECT_TRUE(files.undecidedHosts().empty());
    EXPECT_TRUE(lookAt("", later + 20 * millisecond, 3000).empty());
    EXPECT_TRUE(files.look(4000, false).empty());
}

TEST_F(WatchedRequest, hasItsTimeBeforeItsBytes)
{
    const LONGLONG later = known + 1000 * millisecond;
    EXPECT_TRUE(lookAt("", later, 2000).empty());
    const std::vector<ExchangeEvent> events = lookAt("request", later, 2029);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].bytes, "request");
}

TEST_F(WatchedRequest, isTakenOnceThoughTheTimeIsSetTwice)
{
    const LONGLONG later = known + 1000 * millisecond;
    lookAt("request", later, 2000);
    EXPECT_EQ(lookAt("", later + 200 * millisecond, 2200).size(), 1u);
    EXPECT_TRUE(lookAt("", later + 220 * millisecond, 2220).empty());
    EXPECT_TRUE(files.look(3000, false).empty());
    EXPECT_TRUE(lookAt("", later + 320 * millisecond, 4000).empty());
    EXPECT_EQ(files.look(4030, false).size(), 2u); // the next cycle's
}

TEST_F(WatchedRequest, isTakenOnceThoughTheTimeIsSetLate)
{
    const LONGLONG later = known + 1000 * millisecond;
    lookAt("request", later, 2000);
    EXPECT_TRUE(lookAt("", later, 3000).empty());
    EXPECT_EQ(files.undecidedHosts(), std::vector<std::uint32_t>{4711});
    EXPECT_EQ(lookAt("", later + 1000 * millisecond, 3029).size(), 1u);
    EXPECT_TRUE(files.look(4000, false).empty());
}

TEST_F(WatchedRequest, isNotSeenInTheMakingOfTheFile)
{
    EXPECT_TRUE(lookAt("", known + 20 * millisecond, 1020).empty());
    EXPECT_TRUE(files.look(2000, false).empty());
}

TEST_F(WatchedRequest, isSeenAfterTheClockWasSetBack)
{
    EXPECT_TRUE(lookAt("", known - 3'600'000 * millisecond, 2000).empty());
    EXPECT_EQ(files.look(2030, false).size(), 2u);
}

TEST_F(WatchedRequest, isTakenWithinOneTickOfTheClock)
{
    lookAt("request", known + millisecond, 2000);
    EXPECT_TRUE(lookAt("", known + millisecond, 2001).empty());
    EXPECT_EQ(files.look(2031, false).size(), 1u);
}

TEST(CommandFiles, readOneByteMoreThanAHost)
{
    const Installation installation;
    writeBytes(installation.commandFile(4711), std::string(200'000, 'x'));
    CommandFiles files(installation.root());
    const std::vector<ExchangeEvent> events = files.look(1000, false);
    ASSERT_EQ(countOf(events, EventKind::requestWritten), 1u);
    EXPECT_EQ(events.back().bytes.size(), 65'537u);
}

TEST(CommitFiles, findsARecordAcrossTwoReads)
{
    constexpr LONGLONG bytesAtOnce = 1 << 24;
    const Installation installation;
    const std::wstring path = installation.path(L"temp\\torvapdm-328.dat");
    extendFile(path, bytesAtOnce - 8);
    const std::string record = peer::formatCommitRecord({17, L"C:\\a.mcam"});
    peer::appendToFile(path, record);
    CommitFiles files(installation.root());
    files.look(1000);
    const std::vector<ExchangeEvent> events = files.look(2000);
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.back().bytes, record);
}

TEST(CommitFiles, findsARecordThatIsTakenBeforeTheNextLook)
{
    const Installation installation;
    CommitFiles files(installation.root());
    files.look(1000);
    const std::string record = peer::formatCommitRecord({17, L"C:\\a.mcam"});
    writeBytes(installation.path(L"temp\\torvapdm-328.dat"), record);
    writeBytes(peer::commitPaths(installation.root(), 328).bookmark,
               peer::toUtf8(peer::formatBookmark({.taken = record.size()})));
    const std::vector<ExchangeEvent> events = files.look(2000);
    EXPECT_EQ(countOf(events, EventKind::commitWritten), 1u);
    EXPECT_EQ(countOf(events, EventKind::commitTaken), 1u);
}

TEST(CommitFiles, leaveOutWhatWasTakenBeforeTheFirstLook)
{
    const Installation installation;
    const std::string record = peer::formatCommitRecord({17, L"C:\\a.mcam"});
    writeBytes(installation.path(L"temp\\torvapdm-328.dat"), record);
    writeBytes(peer::commitPaths(installation.root(), 328).bookmark,
               peer::toUtf8(peer::formatBookmark({.taken = record.size()})));
    CommitFiles files(installation.root());
    EXPECT_TRUE(files.look(1000).empty());
}

TEST(WholeFiles, reportsAnEmptyQueueOnceItIsQuiet)
{
    const Installation installation;
    writeBytes(installation.path(L"temp\\ncqueue-17.txt"), "");
    WholeFiles queues(EventKind::ncQueueWritten, installation.path(L"temp"), L"ncqueue-*.txt");
    EXPECT_TRUE(queues.look(1000, true).empty());
    EXPECT_TRUE(queues.isWaiting());
    EXPECT_EQ(countOf(queues.look(1200, false), EventKind::ncQueueWritten), 1u);
    EXPECT_FALSE(queues.isWaiting());
    EXPECT_TRUE(queues.look(5000, false).empty());
}

TEST(WholeFiles, waitForTheContentOfAPicture)
{
    const Installation installation;
    const std::wstring path = installation.path(L"commit\\screendump.bmp");
    writeBytes(path, "");
    WholeFiles pictures(EventKind::pictureWritten, installation.path(L"commit"), L"screendump.bmp");
    pictures.look(1000, false);
    EXPECT_TRUE(pictures.look(5000, false).empty());
    EXPECT_FALSE(pictures.isWaiting());
    writeBytes(path, "BM");
    pictures.look(6000, false);
    const std::vector<ExchangeEvent> events = pictures.look(7000, false);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].bytes, "BM");
}

TEST(WholeFiles, keepsSettingsUntilTheyAreTaken)
{
    const Installation installation;
    const std::wstring path = installation.path(L"temp\\mcsettings-17.txt");
    writeBytes(path, "17|3");
    WholeFiles settings(EventKind::machineSettingsWritten, installation.path(L"temp"),
                        L"mcsettings-*.txt");
    EXPECT_EQ(settings.look(1000, false).size(), 1u);
    DeleteFileW(path.c_str());
    const std::vector<ExchangeEvent> events = settings.look(2000, false);
    ASSERT_EQ(countOf(events, EventKind::machineSettingsTaken), 1u);
    EXPECT_EQ(events[0].bytes, "17|3");
}

TEST(EventQueue, losesEventsWithoutRoom)
{
    EventQueue queue(100'000);
    const auto picture = [](size_t size) {
        return std::vector<ExchangeEvent>{
            {0, EventKind::pictureWritten, 0, L"", std::string(size, 'x')}};
    };
    queue.add(picture(200'000)); // the only one may be larger
    queue.add(picture(1));
    queue.add(picture(1));
    EXPECT_EQ(queue.take().size(), 1u);
    EXPECT_EQ(queue.takeLost(), 2u);
    EXPECT_EQ(queue.takeLost(), 0u);
    queue.add(picture(1));
    EXPECT_EQ(queue.take().size(), 1u);
    EXPECT_TRUE(queue.isEmpty());
}

TEST(LoadStep, isReadWithAndWithoutALineEnd)
{
    for (const char* line : {"Loading File #7: C:\\a", "Loading File #7: C:\\a\r\n"}) {
        EXPECT_EQ(peer::parseLoadStep(line).number, 7) << line;
        EXPECT_EQ(peer::parseLoadStep(line).text, "C:\\a") << line;
    }
    for (const char* line : {"", "\n", "Loading File #8: a", "Loading File #1:a", "hello"})
        EXPECT_EQ(peer::parseLoadStep(line).number, 0) << line;
}
