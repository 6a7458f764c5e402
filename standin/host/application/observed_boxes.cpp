#include "application/observed_calls.h"
#include "control.h"
#include "core/call_text.h"

#include <atomic>
#include <string>
#include <utility>

namespace standin {

namespace {

constexpr UINT answerEveryMs = 10;

std::atomic<bool> isAnswering{false};

// The caption of the innermost box that is open on this thread.
thread_local std::wstring openCaption;

BOOL CALLBACK answerBox(HWND window, LPARAM)
{
    constexpr std::wstring_view dialogClass = L"#32770";
    wchar_t className[16] = L"";
    GetClassNameW(window, className, 16);
    std::wstring title(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    title.resize(
        static_cast<size_t>(GetWindowTextW(window, title.data(), static_cast<int>(title.size()))));
    if (className != dialogClass || title != openCaption)
        return TRUE;
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    return FALSE; // the topmost one is the innermost
}

// Runs inside the box's own message loop: the box is there and takes the answer.
void CALLBACK answerOpenBox(HWND, UINT, UINT_PTR, DWORD)
{
    EnumThreadWindows(GetCurrentThreadId(), answerBox, 0);
}

int showAnsweredBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    const std::wstring outerCaption = std::exchange(openCaption, caption ? caption : L"Error");
    const UINT_PTR timer = SetTimer(nullptr, 0, answerEveryMs, answerOpenBox);
    const int answer = MessageBoxW(owner, text, caption, type);
    KillTimer(nullptr, timer);
    openCaption = outerCaption;
    return answer;
}

} // namespace

void answerMessageBoxes(bool on)
{
    isAnswering = on;
}

bool areMessageBoxesAnswered()
{
    return isAnswering;
}

int WINAPI observedMessageBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type)
{
    const int answer = isAnswering ? showAnsweredBox(owner, text, caption, type)
                                   : MessageBoxW(owner, text, caption, type);
    trace(callLine("message-box", caption, text));
    return answer;
}

} // namespace standin
