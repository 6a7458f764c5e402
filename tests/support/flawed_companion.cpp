// The stand-in Companion with mistakes, which the environment variable COMPANION_FLAW names,
// separated by commas: before its main function runs, some of its system calls are redirected to
// the functions below. Its own code is unchanged.
#include "support/system_calls.h"

#include "peer/companion_files.h"
#include "peer/files.h"
#include "peer/text.h"
#include "peer/wire_constants.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <winsock2.h>

using namespace testing_support;

namespace {

bool isNamed(const wchar_t* path, std::wstring_view start)
{
    const std::wstring_view whole = path;
    return whole.substr(whole.find_last_of(L"\\/") + 1).starts_with(start);
}

bool isCommandFile(const wchar_t* path)
{
    return isNamed(path, peer::commandFileStart);
}

std::wstring pathOf(HANDLE file)
{
    wchar_t path[MAX_PATH + 8] = L"";
    GetFinalPathNameByHandleW(file, path, MAX_PATH, 0);
    return path;
}

bool isOpenRequest(const void* bytes, DWORD size)
{
    const std::string_view text(static_cast<const char*>(bytes), size);
    return text.starts_with(peer::byteOrderMark) && text.find(":\\") != text.npos;
}

// ---- The system's calls, which the functions below use

const auto createSemaphore = systems(&CreateSemaphoreW, "CreateSemaphoreW");
const auto createFile = systems(&CreateFileW, "CreateFileW");
const auto writeFile = systems(&WriteFile, "WriteFile");
const auto lockFile = systems(&LockFileEx, "LockFileEx");
const auto unlockFile = systems(&UnlockFileEx, "UnlockFileEx");
const auto moveFile = systems(&MoveFileExW, "MoveFileExW");
const auto fileAttributes = systems(&GetFileAttributesExW, "GetFileAttributesExW");
const auto fileInformation = systems(&GetFileInformationByHandleEx, "GetFileInformationByHandleEx");
const auto sendMessage = systems(&SendMessageTimeoutW, "SendMessageTimeoutW", L"user32.dll");
const auto receive = systems(&recv, "recv", L"ws2_32.dll");
const auto acceptConnection = systems(&accept, "accept", L"ws2_32.dll");
const auto closeSocket = systems(&closesocket, "closesocket", L"ws2_32.dll");

BOOL writeAll(HANDLE file, std::string_view bytes)
{
    DWORD written = 0;
    return writeFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

// ---- Starts

HANDLE WINAPI createMutexInstead(SECURITY_ATTRIBUTES*, LONG, LONG, const wchar_t* name)
{
    return CreateMutexW(nullptr, FALSE, name);
}

// Each start but the first takes a count, which Windows does not restore when the start ends.
HANDLE WINAPI createAndTakeCount(SECURITY_ATTRIBUTES* security, LONG, LONG, const wchar_t* name)
{
    constexpr LONG counts = 1000;
    static bool isTaken = false; // it looks again until the first one has a window
    const HANDLE semaphore = createSemaphore(security, counts, counts, name);
    const DWORD error = GetLastError();
    if (error == ERROR_ALREADY_EXISTS && !isTaken)
        isTaken = WaitForSingleObject(semaphore, 0) == WAIT_OBJECT_0;
    SetLastError(error);
    return semaphore;
}

LRESULT WINAPI sendAndStay(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT flags,
                           UINT timeout, DWORD_PTR* result)
{
    const LRESULT sent = sendMessage(window, message, wParam, lParam, flags, timeout, result);
    const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
    const std::wstring_view arguments(static_cast<const wchar_t*>(data.lpData),
                                      data.cbData / sizeof(wchar_t));
    if (arguments.starts_with(L"--checkout"))
        Sleep(INFINITE);
    return sent;
}

// ---- The log

HANDLE WINAPI openNoLog(const wchar_t* path, DWORD access, DWORD share,
                        SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags, HANDLE model)
{
    if (!isNamed(path, peer::companionLogName))
        return createFile(path, access, share, security, disposition, flags, model);
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

// ---- The commit file

BOOL WINAPI lockNothing(HANDLE, DWORD, DWORD, DWORD, DWORD, OVERLAPPED*)
{
    return TRUE;
}

constexpr DWORD everythingLow = 0xFFFFFFFF, everythingHigh = 0x7FFFFFFF;

BOOL WINAPI lockEverything(HANDLE file, DWORD flags, DWORD reserved, DWORD low, DWORD high,
                           OVERLAPPED* place)
{
    OVERLAPPED start{};
    return isCommandFile(pathOf(file).c_str())
               ? lockFile(file, flags, reserved, low, high, place)
               : lockFile(file, flags, reserved, everythingLow, everythingHigh, &start);
}

BOOL WINAPI unlockEverythingLate(HANDLE file, DWORD reserved, DWORD, DWORD, OVERLAPPED*)
{
    constexpr DWORD longReadMs = 40;
    Sleep(longReadMs);
    OVERLAPPED start{};
    return unlockFile(file, reserved, everythingLow, everythingHigh, &start);
}

// No host appends before the log has its first commit. Before that, the file is emptied, and the
// Companion finds it empty: otherwise it would take the next record for the one it has read.
// Only the thread that takes commits uses these.
std::wstring logPath;
std::string firstCommit; // the line of the log, as long as it is withheld
bool isEmptied = false;

bool isHostsCommit(std::string_view logged)
{
    return logged.find(" commit ") != logged.npos && logged.find(" from=") != logged.npos;
}

BOOL WINAPI withholdFirstCommit(HANDLE file, const void* bytes, DWORD size, DWORD* written,
                                OVERLAPPED* place)
{
    const std::string_view line(static_cast<const char*>(bytes), size);
    if (!isHostsCommit(line) || isEmptied || !firstCommit.empty() ||
        isHostsCommit(peer::readFile(pathOf(file)).value_or("")))
        return writeFile(file, bytes, size, written, place);
    logPath = pathOf(file);
    firstCommit = line;
    *written = size;
    return TRUE;
}

void emptyOnceTaken(const std::wstring& path)
{
    const auto bookmark = peer::readFile(path.substr(0, path.rfind(L'.')) + peer::bookmarkEnd);
    isEmptied = bookmark == "taken " + std::to_string(peer::fileSize(path)) + '\n' &&
                peer::writeFile(path, "");
}

HANDLE WINAPI openEmptiedCommitFile(const wchar_t* path, DWORD access, DWORD share,
                                    SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                                    HANDLE model)
{
    if (isNamed(path, peer::commitFileStart) && std::wstring_view(path).ends_with(peer::dataEnd) &&
        access == GENERIC_READ && !firstCommit.empty()) {
        if (isEmptied)
            peer::appendToFile(logPath, std::exchange(firstCommit, {}));
        else
            emptyOnceTaken(path);
    }
    return createFile(path, access, share, security, disposition, flags, model);
}

BOOL WINAPI forgetBookmark(const wchar_t* from, const wchar_t* to, DWORD flags)
{
    if (!std::wstring_view(to).ends_with(peer::bookmarkEnd))
        return moveFile(from, to, flags);
    return DeleteFileW(from);
}

// ---- The port

int endSocketCall()
{
    WSASetLastError(WSAEWOULDBLOCK);
    return SOCKET_ERROR;
}

// What comes without a line feed is lost.
int WINAPI receiveOnlyLines(SOCKET socket, char* bytes, int size, int flags)
{
    const int got = receive(socket, bytes, size, flags);
    return got > 0 && bytes[got - 1] != '\n' ? endSocketCall() : got;
}

int WINAPI endAtUnknown(SOCKET socket, char* bytes, int size, int flags)
{
    const int got = receive(socket, bytes, size, flags);
    if (got > 0 && std::string_view(bytes, static_cast<size_t>(got)).starts_with("HELLO"))
        TerminateProcess(GetCurrentProcess(), 3);
    return got;
}

// One connection after the other.
std::atomic<SOCKET> onlyConnection{INVALID_SOCKET};

SOCKET WINAPI acceptOne(SOCKET listening, sockaddr* address, int* size)
{
    if (onlyConnection == INVALID_SOCKET)
        return onlyConnection = acceptConnection(listening, address, size);
    endSocketCall();
    return INVALID_SOCKET;
}

int WINAPI closeOne(SOCKET socket)
{
    if (onlyConnection == socket)
        onlyConnection = INVALID_SOCKET;
    return closeSocket(socket);
}

// ---- Requests

HANDLE WINAPI openUnshared(const wchar_t* path, DWORD access, DWORD share,
                           SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                           HANDLE model)
{
    return createFile(path, access, isCommandFile(path) ? 0 : share, security, disposition, flags,
                      model);
}

HANDLE WINAPI openOrCreate(const wchar_t* path, DWORD access, DWORD share,
                           SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                           HANDLE model)
{
    return createFile(path, access, share, security,
                      isCommandFile(path) ? OPEN_ALWAYS : disposition, flags, model);
}

BOOL WINAPI claimEmpty(const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data)
{
    const BOOL isThere = fileAttributes(path, level, data);
    if (isCommandFile(path))
        static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data)->nFileSizeLow = 0;
    return isThere;
}

BOOL WINAPI claimThere(const wchar_t* path, GET_FILEEX_INFO_LEVELS level, void* data)
{
    return fileAttributes(path, level, data) || isCommandFile(path);
}

BOOL WINAPI claimHandleEmpty(HANDLE file, FILE_INFO_BY_HANDLE_CLASS kind, void* data, DWORD size)
{
    const BOOL isKnown = fileInformation(file, kind, data, size);
    if (kind == FileStandardInfo)
        static_cast<FILE_STANDARD_INFO*>(data)->EndOfFile.QuadPart = 0;
    return isKnown;
}

BOOL WINAPI writeInTwo(HANDLE file, const void* bytes, DWORD size, DWORD* written,
                       OVERLAPPED* place)
{
    constexpr DWORD betweenMs = 300;
    if (!isOpenRequest(bytes, size))
        return writeFile(file, bytes, size, written, place);
    const std::string_view text(static_cast<const char*>(bytes), size);
    writeAll(file, text.substr(0, size / 2));
    Sleep(betweenMs);
    *written = size;
    return writeAll(file, text.substr(size / 2));
}

BOOL WINAPI writeWithoutMark(HANDLE file, const void* bytes, DWORD size, DWORD* written,
                             OVERLAPPED* place)
{
    if (!isOpenRequest(bytes, size))
        return writeFile(file, bytes, size, written, place);
    *written = size;
    return writeAll(
        file,
        std::string_view(static_cast<const char*>(bytes), size).substr(peer::byteOrderMark.size()));
}

BOOL WINAPI writeWithoutLineEnd(HANDLE file, const void* bytes, DWORD size, DWORD* written,
                                OVERLAPPED* place)
{
    if (!isNamed(pathOf(file).c_str(), peer::machineSettingsStart))
        return writeFile(file, bytes, size, written, place);
    *written = size;
    return writeAll(file, std::string_view(static_cast<const char*>(bytes), size - 2));
}

// Machine settings get another name until the request is written.
std::wstring lateSettings;

HANDLE WINAPI openLateSettings(const wchar_t* path, DWORD access, DWORD share,
                               SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                               HANDLE model)
{
    const bool isLate = isNamed(path, peer::machineSettingsStart);
    if (isLate)
        lateSettings = path;
    return createFile(isLate ? (lateSettings + L".late").c_str() : path, access, share, security,
                      disposition, flags, model);
}

BOOL WINAPI writeThenSettings(HANDLE file, const void* bytes, DWORD size, DWORD* written,
                              OVERLAPPED* place)
{
    constexpr DWORD lateMs = 200;
    const BOOL isWritten = writeFile(file, bytes, size, written, place);
    if (isOpenRequest(bytes, size)) {
        Sleep(lateMs);
        MoveFileExW((lateSettings + L".late").c_str(), lateSettings.c_str(), 0);
    }
    return isWritten;
}

// ---- The next start

HANDLE WINAPI findNoCommitFiles(const wchar_t* pattern, WIN32_FIND_DATAW* found)
{
    return isNamed(pattern, peer::commitFileStart)
               ? INVALID_HANDLE_VALUE
               : FindFirstFileExW(pattern, FindExInfoStandard, found, FindExSearchNameMatch,
                                  nullptr, 0);
}

// ---- Which

#define REDIRECT(function, to) redirectCalls(&function, #function, &to)
#define REDIRECT_IN(library, function, to) redirectCalls(&function, #function, &to, library)

struct Flaw {
    std::string_view name;
    void (*install)();
};

constexpr Flaw flaws[] = {
    {"mutex", [] { REDIRECT(CreateSemaphoreW, createMutexInstead); }},
    {"takes-count", [] { REDIRECT(CreateSemaphoreW, createAndTakeCount); }},
    {"stays", [] { REDIRECT_IN(L"user32.dll", SendMessageTimeoutW, sendAndStay); }},
    {"logs-nothing", [] { REDIRECT(CreateFileW, openNoLog); }},
    {"locks-nothing", [] { REDIRECT(LockFileEx, lockNothing); }},
    {"locks-everything",
     [] {
         REDIRECT(LockFileEx, lockEverything);
         REDIRECT(UnlockFileEx, unlockEverythingLate);
     }},
    {"empties-commit-file",
     [] {
         REDIRECT(WriteFile, withholdFirstCommit);
         REDIRECT(CreateFileW, openEmptiedCommitFile);
     }},
    {"forgets", [] { REDIRECT(MoveFileExW, forgetBookmark); }},
    {"ignores-left-commits", [] { REDIRECT(FindFirstFileW, findNoCommitFiles); }},
    {"loses-pieces", [] { REDIRECT_IN(L"ws2_32.dll", recv, receiveOnlyLines); }},
    {"ends-at-unknown", [] { REDIRECT_IN(L"ws2_32.dll", recv, endAtUnknown); }},
    {"serves-one",
     [] {
         REDIRECT_IN(L"ws2_32.dll", accept, acceptOne);
         REDIRECT_IN(L"ws2_32.dll", closesocket, closeOne);
     }},
    {"shares-nothing", [] { REDIRECT(CreateFileW, openUnshared); }},
    {"creates-command-file",
     [] {
         REDIRECT(CreateFileW, openOrCreate);
         REDIRECT(GetFileAttributesExW, claimThere);
     }},
    {"overwrites-request",
     [] {
         REDIRECT(GetFileAttributesExW, claimEmpty);
         REDIRECT(GetFileInformationByHandleEx, claimHandleEmpty);
     }},
    {"writes-in-two", [] { REDIRECT(WriteFile, writeInTwo); }},
    {"writes-no-mark", [] { REDIRECT(WriteFile, writeWithoutMark); }},
    {"ends-no-line", [] { REDIRECT(WriteFile, writeWithoutLineEnd); }},
    {"writes-settings-late",
     [] {
         REDIRECT(CreateFileW, openLateSettings);
         REDIRECT(WriteFile, writeThenSettings);
     }},
};

bool installFlaws()
{
    const char* const names = std::getenv("COMPANION_FLAW");
    std::string_view rest = names != nullptr ? names : "";
    while (!rest.empty()) {
        const size_t end = std::min(rest.find(','), rest.size());
        const auto flaw = std::ranges::find(flaws, rest.substr(0, end), &Flaw::name);
        if (flaw == std::end(flaws))
            std::exit(97);
        flaw->install();
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return true;
}

[[maybe_unused]] const bool isInstalled = installFlaws(); // before WinMain

} // namespace
