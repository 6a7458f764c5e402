#include "running_programs.h"

#include "wire_constants.h"

namespace companion {
namespace {

constexpr ULONG_PTR argumentsMark = 0x5A454D31; // tells our messages from anybody else's
constexpr UINT answerBoundMs = 10000;
constexpr DWORD endBoundMs = 10000;

BOOL CALLBACK stopAtInstance(HWND window, LPARAM parameter)
{
    if (GetPropW(window, instanceProperty) == nullptr)
        return TRUE;
    *reinterpret_cast<HWND*>(parameter) = window;
    return FALSE;
}

DWORD processOf(HWND window)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

} // namespace

OwnHandle claimInstance()
{
    OwnHandle semaphore(CreateSemaphoreW(nullptr, 1, 1, singletonName));
    if (GetLastError() == ERROR_ALREADY_EXISTS)
        semaphore.reset();
    return semaphore;
}

HWND findInstanceWindow()
{
    HWND window = nullptr;
    EnumWindows(stopAtInstance, reinterpret_cast<LPARAM>(&window));
    return window;
}

std::optional<bool> handOver(HWND window, const std::wstring& arguments)
{
    // The user started this process just now, so it may pass the right to come to the front on.
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
    return isAnswered != 0 && answer == static_cast<DWORD_PTR>(carriedOut);
}

std::optional<bool> handOverQuit(HWND window, const std::wstring& arguments)
{
    const OwnHandle process(OpenProcess(SYNCHRONIZE, FALSE, processOf(window)));
    const std::optional<bool> isCarriedOut = handOver(window, arguments);
    if (!process || !isCarriedOut.value_or(false))
        return isCarriedOut;
    return WaitForSingleObject(process.get(), endBoundMs) == WAIT_OBJECT_0;
}

std::optional<std::wstring> readHandedOver(LPARAM copyData)
{
    const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(copyData);
    if (data == nullptr || data->dwData != argumentsMark || data->cbData % sizeof(wchar_t) != 0)
        return std::nullopt;
    return std::wstring(static_cast<const wchar_t*>(data->lpData), data->cbData / sizeof(wchar_t));
}

} // namespace companion
