// Runs the listener thread in this process and controls it through the command file.
#include "addin/exports.h"
#include "incoming/listener.h"
#include "incoming/command_dispatch.h"
#include "platform/compiler.h"
#include "companion/network_thread.h"
#include "incoming/pending_request.h"
#include "support/add_in_state.h"
#include "platform/narrow_text.h"
#include "support/companion_double.h"
#include "support/counts.h"
#include "support/host_fixture.h"
#include "support/sockets.h"
#include "support/system_calls.h"
#include "support/windows.h"
#include "incoming/incoming_state.h"

#include "host/document.h"
#include "host/host.h"

#include <share.h>
#include <winsock2.h>

using namespace torvapdm;
using namespace testing_support;

namespace {

const Lines checkInCalls = {L"other m_fclose(null, 0, null)", L"other set_db_unchanged()",
                            LR"(other post_FT_command("Mastercam", "OnFileNew"))"};
const Lines newFileCalls(checkInCalls.begin() + 1, checkInCalls.end());

bool isSocketsLibraryStarted()
{
    const SOCKET any = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    return any != INVALID_SOCKET && closesocket(any) == 0;
}

class Listener : public HostFixture {
protected:
    Listener() { m_open(0); }
    ~Listener() override { m_close(0); }

    void send(std::string_view request)
    {
        ASSERT_TRUE(waitUntil([&] { return writeRequest(commandPath, request); }));
    }
    bool isEmptied()
    {
        return waitUntil([&] { return readBytes(commandPath) == ""; });
    }
    // A malformed request has no visible effect. A valid one shows that it has been processed.
    void expectNextRequestServed()
    {
        newTrace();
        send(openRequest(4711, ""));
        EXPECT_EQ(newTrace(2), newFileCalls);
        EXPECT_EQ(AddInState::requestId(), 4711);
    }

    const std::wstring commandPath = installation.commandFile(GetCurrentProcessId());
};

std::vector<DWORD> pauses;

void WINAPI endingSleep(DWORD milliseconds)
{
    pauses.push_back(milliseconds);
    AddInState::stopListener();
}

// Ends the listener in its second cycle.
void WINAPI endingSecondSleep(DWORD milliseconds)
{
    pauses.push_back(milliseconds);
    if (pauses.size() == 2)
        AddInState::stopListener();
}

// The effects of a command, in order, with the add-in's state at each.
std::vector<std::string> effects;
std::wstring watchedFile;

void noteEffect(const std::string& effect)
{
    effects.push_back(effect + ' ' + std::to_string(AddInState::requestId()) + ' ' +
                      std::to_string(AddInState::zemId()) + ' ' + toUtf8(AddInState::filePath()) +
                      '|' + readBytes(watchedFile).value_or("gone"));
    AddInState::stopListener();
}

void notedClose(const wchar_t*, int, FILE*)
{
    noteEffect("close");
}

void notedUnchanged()
{
    noteEffect("unchanged");
}

void notedCommand(const CString&, const CString& command)
{
    noteEffect(toUtf8(command.GetString()));
}

BOOL WINAPI notedListenerPost(HWND, UINT message, WPARAM, LPARAM)
{
    noteEffect("post " + std::to_string(message));
    return TRUE;
}

void noteEffects(const std::wstring& commandFile)
{
    watchedFile = commandFile;
    const HMODULE self = GetModuleHandleW(nullptr);
    standin::redirectImports(self, &m_fclose, &notedClose);
    standin::redirectImports(self, &set_db_unchanged, &notedUnchanged);
    standin::redirectImports(self, &post_FT_command, &notedCommand);
    redirectCalls(&PostMessageW, "PostMessageW", &notedListenerPost, L"user32.dll");
}

HANDLE WINAPI stoppingCreateFile(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE)
{
    AddInState::stopListener();
    return INVALID_HANDLE_VALUE;
}

BOOL WINAPI negativeFileSize(HANDLE, PLARGE_INTEGER size)
{
    static int questions = 0;
    if (++questions > 1) // the listener has not ended
        AddInState::stopListener();
    size->QuadPart = -1;
    return TRUE;
}

std::string probed;

FILE* __cdecl notedProbe(const char* path, const char* mode, int sharing)
{
    probed = std::string(path) + ' ' + mode + ' ' + std::to_string(sharing);
    AddInState::stopListener();
    return nullptr;
}

class ListenerCycle : public HostFixture {
protected:
    // The pauses of one cycle; the first pause sets the stop flag.
    static std::vector<DWORD> pausesOfOne()
    {
        redirectCalls(&Sleep, "Sleep", &endingSleep);
        EXPECT_EQ(listenerProcedure(nullptr), 0u);
        return pauses;
    }

    // Carries out the command in a listener on this thread, which its first effect stops.
    std::vector<std::string> effectsOf(const std::string& command)
    {
        AddInState::setMessageWindow(getMainFrameWindow());
        AddInState::setRequestId(3);
        AddInState::setZemId(4);
        AddInState::setFilePath(L"C:\\a");
        AddInState::setFileTypePrefix(L"CAD");
        AddInState::setCommandFile(createCommandFile(commandPath));
        storePendingRequest(std::make_unique<CompanionFile>(CompanionFile{9, L"C:\\b"}));
        EXPECT_TRUE(writeRequest(commandPath, command));
        noteEffects(commandPath);
        listenerProcedure(nullptr);
        CloseHandle(AddInState::commandFile());
        EXPECT_EQ(AddInState::fileTypePrefix(), L"CAD");
        return effects;
    }

    const std::wstring commandPath = installation.commandFile(GetCurrentProcessId());
};

} // namespace

// The request id, the ZEM id, the path and the command file at each effect.
TEST_F(ListenerCycle, checksInInOrder)
{
    EXPECT_EQ(effectsOf("CHECKIN x"),
              (std::vector<std::string>{"close 0 0 |", "post 3 0 0 |", "unchanged 0 0 |",
                                        "OnFileNew 0 0 |"}));
    EXPECT_EQ(takePendingRequest().value_or(CompanionFile{}).id, 9);
}

TEST_F(ListenerCycle, startsANewFileInOrder)
{
    EXPECT_EQ(effectsOf(openRequest(7, "")),
              (std::vector<std::string>{"unchanged 7 4 C:\\a|", "OnFileNew 7 4 C:\\a|"}));
    EXPECT_EQ(takePendingRequest().value_or(CompanionFile{}).id, 9);
}

TEST_F(ListenerCycle, announcesAnOpenRequestInOrder)
{
    EXPECT_EQ(effectsOf(openRequest(-1, "C:\\c")),
              (std::vector<std::string>{"post 0 -1 4 C:\\a|"})); // the message is not registered
    EXPECT_FALSE(isRequestPending()); // id -1 replaces the earlier request
}

TEST_F(ListenerCycle, repostsOnlyAPendingRequest)
{
    AddInState::setMessageWindow(getMainFrameWindow());
    AddInState::setCommandFile(createCommandFile(commandPath));
    noteEffects(commandPath);
    redirectCalls(&Sleep, "Sleep", &endingSecondSleep);
    listenerProcedure(nullptr);
    EXPECT_EQ(effects, std::vector<std::string>{});
    pauses.clear();
    AddInState::allowListener();
    storePendingRequest(std::make_unique<CompanionFile>(CompanionFile{9, L"C:\\b"}));
    listenerProcedure(nullptr);
    EXPECT_EQ(effects, std::vector<std::string>{"post 0 0 4294967295 |"});
    CloseHandle(AddInState::commandFile());
}

TEST_F(ListenerCycle, endsBeforeItsFirstPoll)
{
    redirectCalls(&Sleep, "Sleep", &endingSleep);
    AddInState::stopListener();
    EXPECT_EQ(listenerProcedure(nullptr), 0u);
    EXPECT_TRUE(pauses.empty());
    EXPECT_FALSE(readBytes(commandPath).has_value());
}

TEST_F(ListenerCycle, readsNothingOnceStopped)
{
    AddInState::setCommandFile(createCommandFile(commandPath));
    writeRequest(commandPath, "CHECKIN");
    pausesOfOne();
    EXPECT_EQ(readBytes(commandPath), "CHECKIN");
    EXPECT_EQ(newTrace(), Lines{});
    CloseHandle(AddInState::commandFile());
}

TEST_F(ListenerCycle, keepsNoHandleOfAFailedFile)
{
    AddInState::setCommandFile(createCommandFile(commandPath));
    writeRequest(commandPath, "no command");
    redirectCalls(&CreateFileW, "CreateFileW", &stoppingCreateFile);
    listenerProcedure(nullptr);
    EXPECT_EQ(AddInState::commandFile(), nullptr);
}

TEST_F(ListenerCycle, endsOnANegativeSize)
{
    AddInState::setCommandFile(createCommandFile(commandPath));
    redirectCalls(&GetFileSizeEx, "GetFileSizeEx", &negativeFileSize);
    EXPECT_EQ(listenerProcedure(nullptr), 0u);
    EXPECT_FALSE(AddInState::isListenerStopped());
    CloseHandle(AddInState::commandFile());
}

TEST_F(ListenerCycle, probesThePathUnitByUnit)
{
    for (const wchar_t* folder : {L"\u0141", L"\u0141\\temp"})
        CreateDirectoryW(installation.path(folder).c_str(), nullptr);
    registerInstallation(installation.path(L"\u0141"));
    redirectCalls(&_fsopen, "_fsopen", &notedProbe, cLibrary);
    listenerProcedure(nullptr);
    EXPECT_EQ(probed, toUtf8(installation.root()) + "\\A\\temp\\mastercam-" +
                          std::to_string(GetCurrentProcessId()) + ".dat r 64");
    CloseHandle(AddInState::commandFile());
}

TEST_F(Listener, opensTheFileOfAnOpenRequest)
{
    const std::wstring part = makePart();
    send(openRequest(12, toUtf8(part)));
    ASSERT_TRUE(waitUntil([] { return AddInState::zemId() == 12; }));
    EXPECT_EQ(AddInState::requestId(), 12);
    EXPECT_EQ(AddInState::filePath(), part);
    EXPECT_TRUE(isEmptied());
}

TEST_F(Listener, startsANewFileForAnEmptyPath)
{
    send(openRequest(7, ""));
    EXPECT_EQ(newTrace(2), newFileCalls);
    EXPECT_EQ(AddInState::requestId(), 7);
    EXPECT_FALSE(isRequestPending());
}

TEST_F(Listener, carriesOutACheckInInOrder)
{
    AddInState::setRequestId(5);
    AddInState::setZemId(5);
    AddInState::setFilePath(L"C:\\a.mcam");
    send("CHECKIN C:\\a.mcam");
    EXPECT_EQ(newTrace(3), checkInCalls);
    EXPECT_EQ(AddInState::requestId(), 0);
    EXPECT_EQ(AddInState::zemId(), 0u);
    EXPECT_EQ(AddInState::filePath(), L"");
}

TEST_F(Listener, carriesOutABareCheckIn)
{
    send("CHECKIN");
    EXPECT_EQ(newTrace(3), checkInCalls);
}

TEST_F(Listener, postsAWindowMoveOnACheckIn)
{
    const WatchedMessageWindow window;
    send("CHECKIN ");
    EXPECT_EQ(newTrace(3), checkInCalls); // the message is posted before the last two calls
    EXPECT_EQ(window.arrived(), std::vector<UINT>{3});
}

TEST_F(Listener, survivesAnExceptionInACheckIn)
{
    for (const char* operation : {"m_fclose", "set_db_unchanged", "post_FT_command"})
        standin::raiseNext(operation);
    send("CHECKIN");
    EXPECT_EQ(newTrace(3),
              (Lines{L"other m_fclose(null, 0, null) raised", L"other set_db_unchanged() raised",
                     LR"(other post_FT_command("Mastercam", "OnFileNew") raised)"}));
    expectNextRequestServed(); // so the listener's thread has handled the last exception
    EXPECT_EQ(standin::undeletedExceptions(), 0);
}

TEST_F(Listener, repostsARequestUntilTheHostIsReady)
{
    const std::wstring part = makePart();
    standin::setState("backplot", L"true");
    send(openRequest(12, toUtf8(part)));
    ASSERT_TRUE(waitUntil([] { return isRequestPending(); }));
    ASSERT_TRUE(isEmptied());
    pumpMessages(); // the host is busy at the first post
    EXPECT_TRUE(isRequestPending());
    standin::setState("backplot", L"false");
    EXPECT_TRUE(waitUntil([] { return AddInState::zemId() == 12; }));
}

TEST_F(Listener, replacesAPendingRequestByALaterOne)
{
    standin::setState("backplot", L"true");
    send(openRequest(1, toUtf8(makePart(L"first.mcam"))));
    ASSERT_TRUE(waitUntil([] { return AddInState::requestId() == 1; }) && isEmptied());
    send(openRequest(2, toUtf8(makePart(L"second.mcam"))));
    ASSERT_TRUE(waitUntil([] { return AddInState::requestId() == 2; }));
    standin::setState("backplot", L"false");
    ASSERT_TRUE(waitUntil([] { return AddInState::zemId() == 2; }));
    EXPECT_EQ(AddInState::recentFiles().size(), 1u);
}

TEST_F(Listener, dropsMalformedRequests)
{
    using namespace std::string_view_literals;
    const std::string_view malformed[] = {"\xEF\xBB\xBF"
                                          "12"sv,
                                          "a"sv,
                                          "\xEF\xBB\xBF"
                                          "abc C:\\a\n"sv,
                                          "\xEF\xBB\xBF"
                                          "2147483648 C:\\a\n"sv,
                                          "\x80\xFF\xFE\xFD"sv,
                                          "\0\0\0\0\0\0\0"sv,
                                          "CHECKIN\n"sv,
                                          "\xEF\xBB\xBF"
                                          "CHECKIN x"sv};
    for (const std::string_view text : malformed) {
        AddInState::setRequestId(1);
        send(text);
        ASSERT_TRUE(isEmptied());
        expectNextRequestServed();
    }
}

TEST_F(Listener, keepsTheIdOnAMalformedRequest)
{
    AddInState::setRequestId(5);
    for (const char* text : {"nospace",
                             "\xEF\xBB\xBF"
                             "x C:\\a\n",
                             "\xEF\xBB\xBF"
                             "7"})
        dispatchCommand(prepareCommand(text));
    EXPECT_EQ(AddInState::requestId(), 5);
    EXPECT_FALSE(isRequestPending());
}

TEST_F(Listener, readsARequestOfExactly65536Bytes)
{
    std::string request = openRequest(8, std::string(65536 - 6, 'p'));
    ASSERT_EQ(request.size(), 65536u);
    send(request);
    ASSERT_TRUE(waitUntil([] { return AddInState::requestId() == 8; }));
    EXPECT_TRUE(isEmptied());
    EXPECT_EQ(newTrace(1), Lines{LR"(ui message-box("TORVA ZEM", "The file does not exist."))"});
}

TEST_F(Listener, endsForGoodOn65537Bytes)
{
    const std::string request = openRequest(8, std::string(65537 - 6, 'p'));
    send(request);
    EXPECT_EQ(WaitForSingleObject(AddInState::listenerThread(), generousMs), WAIT_OBJECT_0);
    EXPECT_EQ(readBytes(commandPath), request);
    EXPECT_EQ(AddInState::requestId(), 0);
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(Listener, recreatesADeletedCommandFile)
{
    ASSERT_TRUE(DeleteFileW(commandPath.c_str()));
    expectNextRequestServed();
}

TEST(CommandFile, isNotCreatedUnderATruncatedPath)
{
    const Installation installation;
    const std::wstring other = installation.path(L"precious.txt");
    writeBytes(other, "precious");
    EXPECT_EQ(createCommandFile(other + L'\0' + L"\\temp\\x.dat"), INVALID_HANDLE_VALUE);
    EXPECT_EQ(readBytes(other), "precious");
}

TEST(CommandFile, replacesALinkUnderItsName)
{
    const Installation installation;
    const std::wstring other = installation.path(L"linked.txt");
    const std::wstring path = installation.commandFile(1);
    writeBytes(other, "linked");
    ASSERT_TRUE(CreateHardLinkW(path.c_str(), other.c_str(), nullptr));
    CloseHandle(createCommandFile(path));
    EXPECT_FALSE(readBytes(path).has_value());
    EXPECT_EQ(readBytes(other), "");
}

TEST_F(Listener, sharesItsFileFully)
{
    const HANDLE file = CreateFileW(commandPath.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
}

TEST_F(Listener, failsToProbeItsOwnFile)
{
    EXPECT_FALSE(canOpenWithoutDeleteSharing(truncateToBytes(commandPath).c_str()));
    writeBytes(installation.path(L"free.txt"), "");
    EXPECT_TRUE(
        canOpenWithoutDeleteSharing(truncateToBytes(installation.path(L"free.txt")).c_str()));
}

TEST_F(ListenerCycle, waitsOnePeriodForItsOwnFile)
{
    AddInState::setCommandFile(createCommandFile(commandPath));
    EXPECT_EQ(pausesOfOne(), (std::vector<DWORD>{100}));
    CloseHandle(AddInState::commandFile());
}

TEST_F(ListenerCycle, waitsTwoPeriodsForAForeignFile)
{
    writeBytes(commandPath, "");
    EXPECT_EQ(pausesOfOne(), (std::vector<DWORD>{100, 100}));
}

TEST_F(ListenerCycle, releasesAMovedCommandFile)
{
    AddInState::setCommandFile(createCommandFile(commandPath));
    const std::wstring moved = installation.path(L"moved.dat");
    ASSERT_TRUE(MoveFileW(commandPath.c_str(), moved.c_str()));
    pausesOfOne();
    EXPECT_EQ(readBytes(commandPath), "");
    CloseHandle(AddInState::commandFile());
    // Windows deletes it with its handle; Wine keeps it.
    const HANDLE file =
        CreateFileW(moved.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    EXPECT_TRUE(file != INVALID_HANDLE_VALUE || GetLastError() == ERROR_FILE_NOT_FOUND);
    CloseHandle(file);
}

TEST_F(Listener, usesTheWholeTextOnAShortRead)
{
    EXPECT_EQ(readCommandFile(INVALID_HANDLE_VALUE, 3), std::string(3, '\0'));
    EXPECT_EQ(commandFileSize(INVALID_HANDLE_VALUE), 0);
}

TEST_F(Listener, runsAlongsideTheNetworkThread)
{
    EXPECT_TRUE(waitUntil([] { return isSocketsLibraryStarted(); }));
    // The main thread and the listener remain.
    EXPECT_TRUE(waitUntil([] { return countThreads(GetCurrentProcessId()) == 2; }));
}

TEST(NetworkThread, leavesANonListeningSocket)
{
    ASSERT_FALSE(isSocketsLibraryStarted());
    EXPECT_EQ(networkThread(nullptr), 0u);
    EXPECT_TRUE(isSocketsLibraryStarted());
    const size_t before = countHandles();
    EXPECT_EQ(networkThread(nullptr), 0u);
    EXPECT_EQ(countHandles(), before + 1); // the socket stays open
    EXPECT_EQ(connectTo(20248), WSAECONNREFUSED);
}
