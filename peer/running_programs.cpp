#include "peer/running_programs.h"

#include "peer/wire_constants.h"

#include <algorithm>
#include <bit>

namespace peer {
namespace {

constexpr ULONG_PTR argumentsMark = 0x5A454D31; // distinguishes our messages from other programs
constexpr UINT answerBoundMs = 10000;
constexpr DWORD endBoundMs = 10000;

BOOL CALLBACK stopAtInstance(HWND window, LPARAM parameter)
{
    if (GetPropW(window, instanceProperty) == nullptr)
        return TRUE;
    *reinterpret_cast<HWND*>(parameter) = window;
    return FALSE;
}

bool hasProcess(const std::vector<Host>& hosts, std::uint32_t process)
{
    return std::any_of(
        hosts.begin(), hosts.end(), [&](const Host& host) { return host.process == process; });
}

BOOL CALLBACK addHost(HWND window, LPARAM parameter)
{
    auto& hosts = *reinterpret_cast<std::vector<Host>*>(parameter);
    if (GetPropW(window, hostProperty) == nullptr)
        return TRUE;
    const DWORD process = processOf(window);
    if (process != 0 && !hasProcess(hosts, process))
        hosts.push_back({process, windowTitle(window)});
    return TRUE;
}

} // namespace

std::vector<Host> findHosts()
{
    std::vector<Host> hosts;
    EnumWindows(addHost, reinterpret_cast<LPARAM>(&hosts));
    std::sort(hosts.begin(), hosts.end(),
              [](const Host& a, const Host& b) { return a.process < b.process; });
    return hosts;
}

std::wstring windowTitle(HWND window)
{
    wchar_t title[256];
    const int length = GetWindowTextW(window, title, 256);
    return std::wstring(title, static_cast<size_t>(std::max(length, 0)));
}

DWORD processOf(HWND window)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

OwnHandle claimInstance()
{
    OwnHandle semaphore(CreateSemaphoreW(nullptr, 1, 1, singletonName));
    if (GetLastError() == ERROR_ALREADY_EXISTS)
        semaphore.reset();
    return semaphore;
}

bool isInstanceRunning()
{
    // Access is denied when the Companion runs in another security context.
    const OwnHandle semaphore(OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, singletonName));
    return semaphore != nullptr || GetLastError() == ERROR_ACCESS_DENIED;
}

std::optional<SemaphoreCounts> readInstanceCounts()
{
    // No other function of the system reads the counts without changing them.
    using Query = LONG(WINAPI*)(HANDLE semaphore, int kind, void* counts, ULONG size, ULONG* got);
    constexpr int basicInformation = 0;
    constexpr DWORD queryAccess = 1;
    const auto query =
        std::bit_cast<Query>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySemaphore"));
    const OwnHandle semaphore(OpenSemaphoreW(queryAccess, FALSE, singletonName));
    SemaphoreCounts counts;
    if (!query || !semaphore ||
        query(semaphore.get(), basicInformation, &counts, sizeof counts, nullptr) < 0)
        return std::nullopt;
    return counts;
}

HWND findInstanceWindow()
{
    HWND window = nullptr;
    EnumWindows(stopAtInstance, reinterpret_cast<LPARAM>(&window));
    return window;
}

std::optional<bool> handOver(HWND window, const std::wstring& arguments)
{
    // The user has just started this process, so it may pass on the right to come to the front.
    AllowSetForegroundWindow(processOf(window));
    COPYDATASTRUCT data{};
    data.dwData = argumentsMark;
    data.cbData = static_cast<DWORD>(arguments.size() * sizeof(wchar_t));
    data.lpData = const_cast<wchar_t*>(arguments.data());
    DWORD_PTR answer = 0;
    const LRESULT isAnswered =
        SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_NORMAL,
                            answerBoundMs, &answer);
    if (isAnswered == 0 && !IsWindow(window))
        return std::nullopt;
    return isAnswered != 0 && answer == static_cast<DWORD_PTR>(answerCarriedOut);
}

std::optional<bool> handOverQuit(HWND window, const std::wstring& arguments)
{
    const OwnHandle process(OpenProcess(SYNCHRONIZE, FALSE, processOf(window)));
    const std::optional<bool> isCarriedOut = handOver(window, arguments);
    if (!process || !isCarriedOut.value_or(false))
        return isCarriedOut;
    return WaitForSingleObject(process.get(), endBoundMs) == WAIT_OBJECT_0;
}

std::optional<std::wstring> parseHandedOver(LPARAM copyData)
{
    const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(copyData);
    if (data == nullptr || data->dwData != argumentsMark || data->cbData % sizeof(wchar_t) != 0)
        return std::nullopt;
    return std::wstring(static_cast<const wchar_t*>(data->lpData), data->cbData / sizeof(wchar_t));
}

} // namespace peer
