#include "outgoing/commit.h"

#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"
#include "support/sockets.h"
#include "support/system_calls.h"
#include "support/message_boxes.h"
#include "formats/wire_constants.h"

#include <algorithm>
#include <cstdio>

using namespace torvapdm;
using namespace testing_support;
using namespace std::string_literals;

namespace {

class Commit : public HostFixture {
protected:
    Commit()
    {
        installation.endStandardInput();
        standin::setState("geo_filename", L"C:\\a.mcam");
        AddInState::setZemId(42);
    }
    void runCompanion()
    {
        companion.holdSemaphore();
        companion.showWindow();
    }
    std::string records() const { return readBytes(commitFile).value_or("none"); }

    CompanionDouble companion;
    // The test process acts as the Companion.
    const std::wstring commitFile =
        installation.path(L"temp\\torvapdm-" + std::to_wstring(GetCurrentProcessId()) + L".dat");
};

// The commit record of C:\a.mcam for id 42.
const std::string recordOfA = "\x2A\0\0\0\x09\0\0\0C\0:\0\\\0a\0.\0m\0c\0a\0m\0"s;

// Another handle to the commit file, opened with this sharing mode.
struct OtherHandle {
    OtherHandle(const std::wstring& path, DWORD sharing)
        : file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, sharing, nullptr,
                           OPEN_ALWAYS, 0, nullptr))
    {
    }
    ~OtherHandle() { CloseHandle(file); }
    HANDLE file;
};

// The recorded calls, in order.
std::vector<std::string> appendCalls;
bool doAppendCallsFail = false;
const std::vector<std::string> appendOf26BytesAt7 = {"seek 0 0 2", "lock 7 0 26 0", "write 26",
                                                     "unlock 7 0 26 0"};
// GENERIC_READ | GENERIC_WRITE, all sharing modes, OPEN_ALWAYS.
const std::string opening = "open " + std::to_string(0xC0000000) + " 7 4 0";

void note(const char* call, std::vector<DWORD> numbers)
{
    std::string line = call;
    for (const DWORD number : numbers)
        line += ' ' + std::to_string(number);
    appendCalls.push_back(line);
}

DWORD WINAPI notedSetFilePointer(HANDLE file, LONG low, PLONG high, DWORD method)
{
    note("seek", {static_cast<DWORD>(low), static_cast<DWORD>(*high), method});
    return systems(&SetFilePointer, "SetFilePointer")(file, low, high, method);
}

BOOL WINAPI notedLockFile(HANDLE file, DWORD low, DWORD high, DWORD length, DWORD lengthHigh)
{
    note("lock", {low, high, length, lengthHigh});
    return !doAppendCallsFail &&
           systems(&LockFile, "LockFile")(file, low, high, length, lengthHigh);
}

BOOL WINAPI notedWriteFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written,
                           LPOVERLAPPED overlapped)
{
    note("write", {size});
    return !doAppendCallsFail &&
           systems(&WriteFile, "WriteFile")(file, bytes, size, written, overlapped);
}

BOOL WINAPI notedUnlockFile(HANDLE file, DWORD low, DWORD high, DWORD length, DWORD lengthHigh)
{
    note("unlock", {low, high, length, lengthHigh});
    return !doAppendCallsFail &&
           systems(&UnlockFile, "UnlockFile")(file, low, high, length, lengthHigh);
}

HANDLE WINAPI notedCreateFile(LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES own,
                              DWORD disposition, DWORD flags, HANDLE model)
{
    note("open", {access, sharing, disposition, flags});
    return systems(&CreateFileW, "CreateFileW")(path, access, sharing, own, disposition, flags,
                                                model);
}

BOOL WINAPI notedCloseHandle(HANDLE handle)
{
    note("close", {});
    return systems(&CloseHandle, "CloseHandle")(handle);
}

int WINAPI notedConnect(SOCKET connection, const sockaddr* server, int size)
{
    note("connect", {});
    return systems(&connect, "connect", L"ws2_32.dll")(connection, server, size);
}

HANDLE WINAPI denyingCreateFile(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE)
{
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

void noteAppendCalls()
{
    appendCalls.clear();
    redirectCalls(&SetFilePointer, "SetFilePointer", &notedSetFilePointer);
    redirectCalls(&LockFile, "LockFile", &notedLockFile);
    redirectCalls(&WriteFile, "WriteFile", &notedWriteFile);
    redirectCalls(&UnlockFile, "UnlockFile", &notedUnlockFile);
}

DWORD WINAPI farSetFilePointer(HANDLE, LONG, PLONG high, DWORD)
{
    *high = 3;
    return 7;
}

DWORD WINAPI anotherProcess(HWND, LPDWORD process)
{
    *process = 4321;
    return 1;
}

DWORD WINAPI noProcess(HWND, LPDWORD)
{
    return 0;
}

HANDLE WINAPI notedOpenSemaphore(DWORD access, BOOL inherits, LPCWSTR name)
{
    note("running?", {});
    return systems(&OpenSemaphoreW, "OpenSemaphoreW")(access, inherits, name);
}

BOOL WINAPI notedEnumWindows(WNDENUMPROC callback, LPARAM parameter)
{
    note("window?", {});
    return systems(&EnumWindows, "EnumWindows", L"user32.dll")(callback, parameter);
}

std::wstring upperCase(std::wstring text)
{
    CharUpperBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

// Also records CreateFileW, CloseHandle and connect.
void noteDeliveryCalls()
{
    noteAppendCalls();
    redirectCalls(&CreateFileW, "CreateFileW", &notedCreateFile);
    redirectCalls(&CloseHandle, "CloseHandle", &notedCloseHandle);
    redirectCalls(&connect, "connect", &notedConnect, L"ws2_32.dll");
}

} // namespace

TEST_F(Commit, isRecordedAndAnnounced)
{
    runCompanion();
    const LineReceiver listener;
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(records(), recordOfA);
    EXPECT_EQ(listener.nextConnection(), "ZEMID=42|C:\\a.mcam\n");
    EXPECT_TRUE(listener.isIdle());
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(Commit, announcesANameItCannotConvertAsEmpty)
{
    runCompanion();
    standin::setState("geo_filename", L"C:\\\u4E2D.mcam");
    const LineReceiver listener;
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(records(), "\x2A\0\0\0\x09\0\0\0C\0:\0\\\0\x2D\x4E.\0m\0c\0a\0m\0"s);
    EXPECT_EQ(listener.nextConnection(), "ZEMID=42|\n");
}

TEST_F(Commit, isAppendedAfterEarlierOnes)
{
    runCompanion();
    writeBytes(commitFile, "earlier");
    EXPECT_TRUE(commitDocument());
    AddInState::setZemId(0x1234);
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(records(), "earlier" + recordOfA + "\x34\x12\0\0"s + recordOfA.substr(4));
}

TEST_F(Commit, locksItsRecordDuringOneWrite)
{
    runCompanion();
    writeBytes(commitFile, "earlier");
    noteAppendCalls();
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(appendCalls, appendOf26BytesAt7);
}

TEST_F(Commit, locksBeyondFourGigabytes)
{
    runCompanion();
    noteAppendCalls();
    standin::redirectImports(GetModuleHandleW(nullptr), &notedSetFilePointer, &farSetFilePointer);
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(appendCalls,
              (std::vector<std::string>{"lock 7 3 26 0", "write 26", "unlock 7 3 26 0"}));
}

TEST_F(Commit, isRecordedForTheProcessOfTheWindow)
{
    runCompanion();
    redirectCalls(&GetWindowThreadProcessId, "GetWindowThreadProcessId", &anotherProcess,
                  L"user32.dll");
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(readBytes(installation.path(L"temp\\torvapdm-4321.dat")), recordOfA);
}

TEST_F(Commit, isRecordedForProcess0WithoutAProcess)
{
    runCompanion();
    redirectCalls(&GetWindowThreadProcessId, "GetWindowThreadProcessId", &noProcess, L"user32.dll");
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(readBytes(installation.path(L"temp\\torvapdm-0.dat")), recordOfA);
}

TEST_F(Commit, ensuresTheCompanionBeforeItsWindow)
{
    runCompanion();
    redirectCalls(&OpenSemaphoreW, "OpenSemaphoreW", &notedOpenSemaphore);
    redirectCalls(&EnumWindows, "EnumWindows", &notedEnumWindows, L"user32.dll");
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(appendCalls, (std::vector<std::string>{"running?", "window?"}));
}

TEST_F(Commit, looksForTheFtpServerUpToTwice)
{
    runCompanion();
    for (const char* setting : {"UseFtpServer=y\n", "UseFtpServer=Y\n"}) {
        writeBytes(installation.path(L"cfg\\settings.ini"), setting);
        installation.feedStandardInput("1\n2\n3\n");
        EXPECT_TRUE(commitDocument());
        EXPECT_EQ(std::getchar(), setting[13] == 'y' ? '2' : '3'); // a line for each look-up
    }
}

TEST_F(Commit, isAppendedBeforeTheNotice)
{
    runCompanion();
    writeBytes(commitFile, "earlier");
    const LineReceiver listener;
    noteDeliveryCalls();
    EXPECT_TRUE(commitDocument());
    const std::vector<std::string> calls(std::find(appendCalls.begin(), appendCalls.end(), opening),
                                         appendCalls.end());
    std::vector<std::string> expected = {opening};
    expected.insert(expected.end(), appendOf26BytesAt7.begin(), appendOf26BytesAt7.end());
    expected.insert(expected.end(), {"close", "connect"});
    EXPECT_EQ(calls, expected);
}

TEST_F(Commit, yieldsToAnExclusiveReader)
{
    runCompanion();
    EXPECT_TRUE(commitDocument());
    const OtherHandle owner(commitFile, 0);
    EXPECT_NE(owner.file, INVALID_HANDLE_VALUE);
}

TEST_F(Commit, succeedsDuringASharedRead)
{
    runCompanion();
    const OtherHandle reader(commitFile, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(records(), recordOfA);
}

TEST_F(Commit, countsAsDeliveredWhenWritingFails)
{
    runCompanion();
    writeBytes(commitFile, "earlier");
    noteAppendCalls();
    doAppendCallsFail = true;
    const LineReceiver listener;
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(appendCalls, appendOf26BytesAt7);
    EXPECT_EQ(listener.nextConnection(), "ZEMID=42|C:\\a.mcam\n");
    EXPECT_EQ(records(), "earlier");
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(Commit, reportsAFileItCannotOpen)
{
    runCompanion();
    const LineReceiver listener;
    {
        const OtherHandle owner(commitFile, 0);
        EXPECT_FALSE(commitDocument());
        EXPECT_EQ(newTrace(), Lines{notCommitted});
    }
    DeleteFileW(commitFile.c_str());
    CreateDirectoryW(commitFile.c_str(), nullptr);
    EXPECT_FALSE(commitDocument());
    EXPECT_EQ(newTrace(), Lines{notCommitted});
    removeFolder(installation.path(L"temp"));
    EXPECT_FALSE(commitDocument());
    EXPECT_EQ(newTrace(), Lines{notCommitted});
    EXPECT_TRUE(listener.isIdle());
}

TEST_F(Commit, reportsAFileItMayNotWrite)
{
    runCompanion();
    writeBytes(commitFile, "earlier");
    redirectCalls(&CreateFileW, "CreateFileW", &denyingCreateFile);
    EXPECT_FALSE(commitDocument());
    EXPECT_EQ(newTrace(), Lines{notCommitted});
}

TEST_F(Commit, startsAWindowlessCompanion)
{
    companion.holdSemaphore();
    recordCompanionStarts(installation);
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(companionStarts(installation, 1), Lines{LR"(0 --commit "C:\a.mcam")"});
    AddInState::setZemId(noZemId);
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(companionStarts(installation, 2)[1], LR"(0 --commit "C:\a.mcam" --id 4294967295)");
    EXPECT_EQ(records(), "none");
}

TEST_F(Commit, startsAStoppedCompanionTwice)
{
    recordCompanionStarts(installation);
    EXPECT_TRUE(commitDocument());
    Lines lines = companionStarts(installation, 2);
    std::sort(lines.begin(), lines.end()); // the order of the two processes varies
    EXPECT_EQ(lines, (Lines{LR"(0 --commit "C:\a.mcam")", L"1"}));
}

TEST_F(Commit, reportsACompanionItCannotStart)
{
    EXPECT_FALSE(commitDocument());
    EXPECT_EQ(newTrace(), Lines{notStarted});
    companion.holdSemaphore(); // running, but without a window or program file
    EXPECT_FALSE(commitDocument());
    EXPECT_EQ(newTrace(), Lines{notCommitted});
}

TEST_F(Commit, isRedirectedForTheFtpServer)
{
    companion.holdSemaphore();
    recordCompanionStarts(installation);
    const std::wstring inside = installation.path(L"parts\\b.mcam");
    struct Case {
        const char* settings;
        std::wstring document;
        std::wstring committed;
    };
    const Case cases[] = {
        {"UseFtpServer=Y\n", L"C:\\work\\a.mcam", installation.path(L"tmp\\a.mcam")},
        {"UseFtpServer=y\n", L"C:\\work\\a.mcam", installation.path(L"tmp\\a.mcam")},
        {"UseFtpServer=y\n", L"a.mcam", installation.path(L"tmp\\a.mcam")},
        {"UseFtpServer=y\n", inside, inside},
        {"UseFtpServer=y\n", L"\\\\?\\" + inside, L"\\\\?\\" + inside}, // not a prefix match
        {"UseFtpServer=n\n", L"C:\\work\\a.mcam", L"C:\\work\\a.mcam"},
        {"", L"C:\\work\\a.mcam", L"C:\\work\\a.mcam"},
        {"UseFtpServer=y\n", upperCase(inside), installation.path(L"tmp\\B.MCAM")}, // exact case
    };
    size_t starts = 0;
    for (const Case& c : cases) {
        writeBytes(installation.path(L"cfg\\settings.ini"), c.settings);
        standin::setState("geo_filename", c.document);
        EXPECT_TRUE(commitDocument());
        EXPECT_EQ(companionStarts(installation, ++starts).back(),
                  L"0 --commit \"" + c.committed + L'"');
    }
}

TEST_F(Commit, redirectsABareNameWhole)
{
    writeBytes(installation.path(L"cfg\\settings.ini"), "UseFtpServer=y\n");
    standin::setState("geo_filename", L"C:/parts/../../a.mcam");
    const LineReceiver receiver;
    runCompanion();
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(receiver.nextConnection(),
              "ZEMID=42|" + toUtf8(installation.path(L"tmp\\C:/parts/../../a.mcam")) + '\n');
    EXPECT_FALSE(
        readBytes(installation.path(L"tmp\\a.mcam")).has_value()); // announced but not written
}

TEST_F(Commit, recordsANameTooLongForItsNotice)
{
    runCompanion();
    standin::setState("geo_filename", L"\u20AC");
    const LineReceiver listener;
    EXPECT_TRUE(commitDocument());
    EXPECT_EQ(records(), "\x2A\0\0\0\x01\0\0\0\xAC\x20"s);
    EXPECT_EQ(listener.nextConnection(), "ZEMID=42|\n");
}
