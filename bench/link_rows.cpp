// Commits and settings.
#include "bench/rows.h"
#include "bench/surroundings.h"
#include "outgoing/commit.h"
#include "companion/settings.h"
#include "support/add_in_state.h"
#include "control.h"
#include "support/bytes.h"
#include "support/companion_double.h"
#include "companion/installation.h"

#include <cstdio>
#include <cstring>

namespace bench {

namespace {

std::wstring commitFile()
{
    return installation().path(L"temp\\torvapdm-" + std::to_wstring(GetCurrentProcessId()) +
                               L".dat");
}

BOOL CALLBACK findProperty(HWND window, LPARAM found)
{
    if (!GetPropW(window, L"https://torva.example/namespace/torvapdm/instance"))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

void isCompanionRunningBare()
{
    const HANDLE semaphore =
        OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE,
                       L"Local\\https://torva.example/namespace/torvapdm/singleton-token");
    require(semaphore != nullptr, "the Companion's semaphore exists");
    CloseHandle(semaphore);
}

void readSettingsBare(const std::string& path, const char* key)
{
    FILE* file = nullptr;
    fopen_s(&file, path.c_str(), "r");
    if (!file)
        return;
    [[maybe_unused]] static volatile bool found;
    char line[1024];
    while (std::fgets(line, sizeof line, file)) {
        found = std::strstr(line, key) != nullptr;
        for (int character; (character = std::getchar()) != '\n' && character != EOF;)
            ;
    }
    std::fclose(file);
}

void appendBare(const std::string& record)
{
    const HANDLE file = CreateFileW(commitFile().c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, 0, nullptr);
    const auto size = static_cast<DWORD>(record.size());
    LONG high = 0;
    const DWORD end = SetFilePointer(file, 0, &high, FILE_END);
    LockFile(file, end, static_cast<DWORD>(high), size, 0);
    DWORD written = 0;
    WriteFile(file, record.data(), size, &written, nullptr);
    UnlockFile(file, end, static_cast<DWORD>(high), size, 0);
    CloseHandle(file);
}

} // namespace

Rows commitRows()
{
    const LineTaker taker;
    testing_support::CompanionDouble companion;
    companion.holdSemaphore();
    companion.showWindow();
    standin::setState("geo_filename", L"C:\\parts\\a.mcam");
    testing_support::AddInState::setZemId(42);
    require(torvapdm::commitDocument(), "a commit is delivered");
    const std::string record = testing_support::readBytes(commitFile()).value_or("");
    const std::string settings = testing_support::toUtf8(torvapdm::settingsFilePath());
    const auto bare = [&] {
        isCompanionRunningBare();
        readSettingsBare(settings, "UseFtpServer");
        readSettingsBare(settings, "UseFtpServer");
        HWND window = nullptr;
        EnumWindows(findProperty, reinterpret_cast<LPARAM>(&window));
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        appendBare(record);
        sendBare("ZEMID=42|C:\\parts\\a.mcam\n");
    };
    const Pair pair = timeInPairs(
        41, 10, [] { torvapdm::commitDocument(); }, bare);
    return {ratioRow("commit (append and notice)", pair, 1.2)};
}

Rows settingsRows()
{
    std::string text;
    for (int i = 0; i < 10000; ++i)
        text += "Setting" + std::to_string(i) + "=value " + std::to_string(i) + "\r\n";
    const std::wstring path = torvapdm::settingsFilePath();
    testing_support::writeBytes(path, text + "UseFtpServer=n\r\n");
    require(torvapdm::getSetting("UseFtpServer") == "n", "the setting is found");
    const std::string narrow = testing_support::toUtf8(path);
    const Pair pair = timeInPairs(
        21, 1, [] { torvapdm::getSetting("UseFtpServer"); },
        [&] { readSettingsBare(narrow, "UseFtpServer"); });
    DeleteFileW(path.c_str());
    return {ratioRow("getSetting over 10,000 lines", pair, 1.2)};
}

} // namespace bench
