#include "incoming/checkout_command.h"

#include "addin/exports.h"
#include "formats/checkout_answer.h"
#include "host/host.h"
#include "companion/identifiers.h"
#include "incoming/listener.h"
#include "incoming/message_window.h"
#include "incoming/pending_request.h"
#include "support/add_in_state.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"
#include "support/system_calls.h"
#include "support/windows.h"
#include "support/message_boxes.h"
#include "incoming/incoming_state.h"
#include "formats/wire_constants.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <stdexcept>

using namespace torvapdm;
using namespace testing_support;

namespace {

class Checkout : public HostFixture {
protected:
    Checkout()
    {
        // A separate temporary folder for the exchange files.
        SetEnvironmentVariableW(L"TMP", installation.path(L"user temp").c_str());
        CreateDirectoryW(installation.path(L"user temp").c_str(), nullptr);
    }
    const std::wstring folder = installation.path(L"user temp\\");
};

// Results of the redirected GetFileSizeEx and ReadFile. The bytes read are those of `answerText`,
// or all 'a' if it is empty.
LONGLONG answerSize = 0;
DWORD answerRead = 0;
std::wstring answerText;
DWORD bytesAsked = 0;

BOOL WINAPI answeringGetFileSize(HANDLE, PLARGE_INTEGER size)
{
    size->QuadPart = answerSize;
    return TRUE;
}

BOOL WINAPI answeringReadFile(HANDLE, LPVOID bytes, DWORD size, LPDWORD read, LPOVERLAPPED)
{
    bytesAsked = size;
    std::fill_n(static_cast<char*>(bytes), size, 'a');
    if (!answerText.empty())
        std::memcpy(bytes, answerText.data(), size);
    *read = answerRead;
    return TRUE;
}

void answerWith(LONGLONG size, DWORD read)
{
    answerSize = size;
    answerRead = read;
    bytesAsked = 0;
    redirectCalls(&GetFileSizeEx, "GetFileSizeEx", &answeringGetFileSize);
    redirectCalls(&ReadFile, "ReadFile", &answeringReadFile);
}

// The answer file contains this text in UTF-16.
void answerWith(const std::wstring& text)
{
    answerText = text;
    const size_t size = text.size() * sizeof(wchar_t);
    answerWith(static_cast<LONGLONG>(size), static_cast<DWORD>(size));
}

int lookUps = 0;

BOOL WINAPI takenName(LPCWSTR, GET_FILEEX_INFO_LEVELS, LPVOID data)
{
    ++lookUps;
    static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data)->dwFileAttributes = FILE_ATTRIBUTE_NORMAL;
    return TRUE;
}

// What GetTempPathW returns, call by call; then the folder.
std::vector<DWORD> lengths;
std::vector<DWORD> sizesAsked;

DWORD WINAPI growingTempPath(DWORD size, LPWSTR folder)
{
    sizesAsked.push_back(size);
    if (!lengths.empty()) {
        const DWORD length = lengths.front();
        lengths.erase(lengths.begin());
        return length;
    }
    lstrcpyW(folder, L"C:\\Temp\\");
    return 8;
}

std::vector<DWORD> opened;

HANDLE WINAPI notedCreateFile(LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES own,
                              DWORD disposition, DWORD flags, HANDLE model)
{
    opened = {access, sharing, disposition, flags};
    return systems(&CreateFileW, "CreateFileW")(path, access, sharing, own, disposition, flags,
                                                model);
}

HANDLE WINAPI tracedCreateFile(LPCWSTR path, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES own,
                               DWORD disposition, DWORD flags, HANDLE model)
{
    if (flags & FILE_FLAG_DELETE_ON_CLOSE)
        standin::trace(L"answer opened");
    return notedCreateFile(path, access, sharing, own, disposition, flags, model);
}

// The Companion is running, so it is asked, but not installed, so the check-out reports an error.
class AnsweredCheckout : public Checkout {
protected:
    AnsweredCheckout()
    {
        companion.holdSemaphore();
        AddInState::setZemId(5);
    }
    CompanionDouble companion;
    const std::wstring notInstalled =
        LR"(ui message-box("TORVA ZEM", "TORVA ZEM is not installed."))";
};

// The calls made for a check-in answer, each with the request id, ZEM id and prefix at that time.
Lines closingSteps;

void noteStep(const std::wstring& step)
{
    closingSteps.push_back(step + L" after " + std::to_wstring(AddInState::requestId()) + L' ' +
                           std::to_wstring(AddInState::zemId()) + L" \"" +
                           AddInState::fileTypePrefix() + L'"');
}

int __cdecl notedCloseStreams()
{
    noteStep(L"_fcloseall");
    return systems(&_fcloseall, "_fcloseall", cLibrary)();
}

void notedCloseDocument(const wchar_t*, int, FILE*)
{
    noteStep(L"m_fclose");
}

BOOL WINAPI notedPost(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    noteStep(L"post " + std::to_wstring(message));
    return systems(&PostMessageW, "PostMessageW", L"user32.dll")(window, message, wParam, lParam);
}

void noteClosingSteps()
{
    redirectCalls(&_fcloseall, "_fcloseall", &notedCloseStreams, cLibrary);
    standin::redirectImports(GetModuleHandleW(nullptr), &m_fclose, &notedCloseDocument);
    redirectCalls(&PostMessageW, "PostMessageW", &notedPost, L"user32.dll");
}

} // namespace

TEST_F(Checkout, startsTheCompanionTwiceWhenStopped)
{
    recordCompanionStarts(installation);
    EXPECT_EQ(m_load(0), 0);
    const Lines lines = companionStarts(installation, 2);
    ASSERT_EQ(lines.size(), 2u);
    const bool plainFirst = lines[0] == L"1"; // the order of the two processes varies
    EXPECT_EQ(lines[plainFirst ? 0 : 1], L"1");
    const std::wstring& request = lines[plainFirst ? 1 : 0];
    EXPECT_EQ(request.rfind(L"0 --checkout \"" + folder + L"\\TORVA ZEM-", 0), 0u) << request;
    EXPECT_EQ(request.substr(request.size() - 5), L".tmp\"");
    EXPECT_EQ(newTrace(), Lines{});
}

TEST_F(Checkout, startsARunningCompanionOnce)
{
    recordCompanionStarts(installation);
    const HANDLE semaphore = CreateSemaphoreW(nullptr, 1, 1, companionSemaphoreName.c_str());
    EXPECT_EQ(m_load(0), 0);
    const Lines lines = companionStarts(installation, 1);
    CloseHandle(semaphore);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].rfind(L"0 --checkout ", 0), 0u);
}

TEST_F(Checkout, clearsThePendingRequestFirst)
{
    AddInState::postRequest({5, L"C:\\a.mcam"});
    m_load(0); // the Companion is missing
    EXPECT_FALSE(isRequestPending());
}

TEST_F(Checkout, endsWithoutACompanion)
{
    EXPECT_EQ(m_load(0), 0);
    EXPECT_EQ(newTrace(), Lines{notStarted});
    EXPECT_TRUE(std::filesystem::is_empty(installation.path(L"user temp")));
}

TEST_F(Checkout, continuesWithAnUninstalledCompanion)
{
    const HANDLE semaphore = CreateSemaphoreW(nullptr, 1, 1, companionSemaphoreName.c_str());
    EXPECT_EQ(m_load(0), 0);
    CloseHandle(semaphore);
    EXPECT_EQ(newTrace(), Lines{LR"(ui message-box("TORVA ZEM", "TORVA ZEM is not installed."))"});
    EXPECT_FALSE(std::filesystem::is_empty(installation.path(L"user temp")));
}

TEST_F(Checkout, doublesABackslashInTheFileName)
{
    const std::wstring name = makeExchangeFileName();
    EXPECT_EQ(name.rfind(folder + L"\\TORVA ZEM-", 0), 0u) << name;
    EXPECT_EQ(name.substr(name.size() - 4), L".tmp");
}

TEST_F(Checkout, givesUpWhenTheNameIsTaken)
{
    const std::int64_t now = _time64(nullptr);
    for (std::int64_t second = now; second < now + 300; ++second)
        writeBytes(formatAnswerPath(folder, second), "");
    EXPECT_EQ(makeExchangeFileName(), L"");
}

TEST_F(Checkout, tries1024Names)
{
    redirectCalls(&GetFileAttributesExW, "GetFileAttributesExW", &takenName);
    EXPECT_EQ(makeExchangeFileName(), L"");
    EXPECT_EQ(lookUps, 1024);
}

TEST_F(Checkout, followsAGrowingTemporaryFolder)
{
    redirectCalls(&GetTempPathW, "GetTempPathW", &growingTempPath);
    lengths = {5, 9, 12};
    EXPECT_EQ(makeExchangeFileName().substr(0, 19), L"C:\\Temp\\\\TORVA ZEM-");
    EXPECT_EQ(sizesAsked, (std::vector<DWORD>{0, 5, 9, 12}));
    lengths = {5, 0};
    EXPECT_EQ(makeExchangeFileName().substr(0, 11), L"\\TORVA ZEM-");
}

TEST_F(Checkout, opensTheAnswerUntilTheProcessEnds)
{
    redirectCalls(&CreateFileW, "CreateFileW", &notedCreateFile);
    readAnswer(folder + L"answer.tmp");
    EXPECT_EQ(opened, (std::vector<DWORD>{GENERIC_READ | GENERIC_WRITE, 0, CREATE_ALWAYS,
                                          FILE_FLAG_DELETE_ON_CLOSE}));
}

TEST_F(Checkout, emptiesTheAnswerByOpeningIt)
{
    const std::wstring file = folder + L"answer.tmp";
    writeBytes(file, "C\0A\0D\0001\0 \0x\0");
    EXPECT_EQ(readAnswer(file), L"");
    EXPECT_NE(GetFileAttributesW(file.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_FALSE(readBytes(file).has_value()); // still open without sharing
    EXPECT_EQ(readAnswer(L""), L"");
}

TEST_F(Checkout, readsNothingWithoutAListenerFile)
{
    answerWith(2, 2);
    AddInState::setCommandFile(INVALID_HANDLE_VALUE);
    EXPECT_EQ(readAnswer(folder + L"invalid.tmp"), L"");
    AddInState::setCommandFile(nullptr); // null is not INVALID_HANDLE_VALUE
    EXPECT_EQ(readAnswer(folder + L"null.tmp"), std::wstring(L"\u6161\0", 2));
}

TEST_F(Checkout, readsAnAnswerOfUpTo65536Bytes)
{
    answerWith(65536, 65536);
    EXPECT_EQ(readAnswer(folder + L"longest.tmp").size(), 65536u);
    EXPECT_EQ(bytesAsked, 65536u);
    answerWith(65537, 65537);
    EXPECT_EQ(readAnswer(folder + L"too long.tmp"), L"");
    EXPECT_EQ(bytesAsked, 0u);
}

TEST_F(Checkout, usesBytesAsTheAnswersLength)
{
    answerWith(8, 3);
    EXPECT_EQ(readAnswer(folder + L"answer.tmp"), L"\u6161\u6161\u6161");
    EXPECT_EQ(bytesAsked, 8u);
    answerWith(8, 0);
    EXPECT_EQ(readAnswer(folder + L"empty.tmp"), L"");
}

TEST_F(Checkout, storesTheTypeOfTheAnsweredFile)
{
    const CheckoutCommand command = parseAnswer(L"CAD1234 C:\\Parts\\bracket.mcam");
    EXPECT_EQ(command.id, 1234);
    EXPECT_EQ(command.path, L"C:\\Parts\\bracket.mcam");
    EXPECT_EQ(AddInState::fileTypePrefix(), L"CAD");
    parseAnswer(L"unusable");
    EXPECT_EQ(AddInState::fileTypePrefix(), L"CAD");
}

TEST_F(Checkout, closesTheFileOnACheckIn)
{
    const WatchedMessageWindow window;
    AddInState::setRequestId(5);
    AddInState::setZemId(5);
    AddInState::setFilePath(L"C:\\a.mcam");
    AddInState::setFileTypePrefix(L"CAD");
    FILE* const stream = _wfopen((folder + L"open.txt").c_str(), L"w");
    ASSERT_NE(stream, nullptr);
    std::fputs("buffered", stream);
    const CheckoutCommand command = parseAnswer(L"CHECKIN C:\\a.mcam");
    EXPECT_EQ(command.id, 0);
    EXPECT_EQ(command.path, L"");
    EXPECT_EQ(AddInState::requestId(), 0);
    EXPECT_EQ(AddInState::zemId(), 0u);
    EXPECT_EQ(AddInState::filePath(), L"C:\\a.mcam"); // stays
    EXPECT_EQ(AddInState::fileTypePrefix(), L"");
    EXPECT_EQ(readBytes(folder + L"open.txt"), "buffered"); // flushed by _fcloseall
    EXPECT_EQ(newTrace(), Lines{L"ui m_fclose(null, 0, null)"});
    EXPECT_EQ(window.arrived(), std::vector<UINT>{3});
}

TEST_F(Checkout, forgetsBeforeItCloses)
{
    const WatchedMessageWindow window;
    AddInState::setRequestId(5);
    AddInState::setZemId(6);
    AddInState::setFileTypePrefix(L"CAD");
    noteClosingSteps();
    parseAnswer(L"CHECKIN C:\\a.mcam");
    EXPECT_EQ(closingSteps, (Lines{LR"(_fcloseall after 0 0 "")", LR"(m_fclose after 0 0 "")",
                                   LR"(post 3 after 0 0 "")"}));
}

TEST_F(Checkout, loadsTheAnsweredFile)
{
    const std::wstring part = makePart();
    loadAnsweredFile({12, part});
    EXPECT_EQ(AddInState::zemId(), 12u);
    EXPECT_EQ(AddInState::filePath(), part);
    EXPECT_TRUE(AddInState::recentFiles().empty());
}

TEST_F(Checkout, loadsUnderANegativeId)
{
    loadAnsweredFile({-5, makePart()});
    EXPECT_EQ(AddInState::zemId(), 0xFFFFFFFBu);
}

TEST_F(Checkout, leavesAMissingFileToTheHost)
{
    const std::wstring missing = installation.path(L"missing.mcam");
    loadAnsweredFile({5, missing});
    EXPECT_EQ(newTrace(), (Lines{L"ui DoFileOpen(\"" + missing +
                                     L"\", false, false, 1, true, *, null) -> false",
                                 loadFailed}));
}

TEST_F(Checkout, reportsAnAnswerWithoutAFile)
{
    for (const CheckoutCommand& command :
         {CheckoutCommand{0, L"C:\\a.mcam"}, CheckoutCommand{5, L""}, CheckoutCommand{}}) {
        loadAnsweredFile(command);
        EXPECT_EQ(newTrace(), Lines{loadFailed});
    }
}

TEST_F(Checkout, reportsAnUnloadableFile)
{
    AddInState::setZemId(5);
    AddInState::setFilePath(L"C:\\old.mcam");
    standin::failNext("DoFileOpen");
    loadAnsweredFile({12, makePart()});
    const Lines lines = newTrace();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1], loadFailed);
    EXPECT_EQ(AddInState::zemId(), noZemId);
    EXPECT_EQ(AddInState::filePath(), L"");
}

TEST_F(AnsweredCheckout, startsTheCompanionFirst)
{
    redirectCalls(&CreateFileW, "CreateFileW", &tracedCreateFile);
    EXPECT_EQ(m_load(0), 0);
    EXPECT_EQ(newTrace(), (Lines{notInstalled, L"ui answer opened"}));
}

TEST_F(AnsweredCheckout, loadsTheNamedPart)
{
    const std::wstring part = makePart();
    answerWith(L"PRT12 " + part);
    EXPECT_EQ(m_load(0), 0);
    const Lines lines = newTrace();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[0], notInstalled);
    EXPECT_EQ(lines[1],
              L"ui DoFileOpen(\"" + part + L"\", false, false, 1, true, *, null) -> true");
    EXPECT_EQ(std::count(lines.begin(), lines.end(), loadFailed), 0);
    EXPECT_EQ(AddInState::zemId(), 12u);
    EXPECT_EQ(AddInState::filePath(), part);
    EXPECT_EQ(AddInState::fileTypePrefix(), L"PRT");
}

TEST_F(AnsweredCheckout, reportsAnIncompleteAnswer)
{
    for (const wchar_t* answer : {L"CAD C:\\f.mcam", L"CAD0 C:\\f.mcam", L"CAD7"}) {
        answerWith(answer);
        EXPECT_EQ(m_load(0), 0) << answer;
        EXPECT_EQ(newTrace(), (Lines{notInstalled, loadFailed})) << answer;
        EXPECT_EQ(AddInState::zemId(), 5u) << answer;
    }
}

TEST_F(AnsweredCheckout, throwsForATwoLetterWord)
{
    answerWith(L"CA C:\\f.mcam");
    EXPECT_THROW(m_load(0), std::out_of_range);
    EXPECT_EQ(newTrace(), Lines{notInstalled});
    EXPECT_EQ(AddInState::fileTypePrefix(), L"CA");
    EXPECT_EQ(AddInState::zemId(), 5u);
}
