// The start of the program: it becomes the running instance, or hands its arguments to the one
// that runs.
#include "commands.h"
#include "event_text.h"
#include "peer/exchange_paths.h"
#include "installation.h"
#include "peer/running_programs.h"
#include "standin/companion/ui/window.h"

#include <chrono>

namespace companion {
namespace {

using Clock = std::chrono::steady_clock;

// The instance exists before its window does, and goes on a little after its window has gone.
constexpr std::chrono::seconds lookForInstance{10};
constexpr DWORD lookAgainMs = 50;

void runMessageLoop(HWND window)
{
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        HWND root = message.hwnd == nullptr ? window : GetAncestor(message.hwnd, GA_ROOT);
        if (!IsDialogMessageW(root, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

int runInstance(const std::wstring& arguments)
{
    State state;
    state.folder = installationFolder();
    state.log.path = logPath(state.folder);
    state.deliveries.log = &state.log;
    makeSubfolders(state.folder);
    logEvent(state.log, L"started",
             textField(L"folder", state.folder) + numberField(L"pid", GetCurrentProcessId()));
    state.copies = readCopyList(workingCopiesPath(state.folder));
    startCommits(state);
    HWND window = createMainWindow(state);
    if (window != nullptr) {
        startDeliveries(state.deliveries);
        if (!arguments.empty())
            receiveArguments(window, arguments);
        runMessageLoop(window);
        stopDeliveries(state.deliveries);
    }
    logEvent(state.log, L"stopped");
    return window != nullptr ? 0 : 1;
}

// Nobody reads a message box of a start that a script made, so the log gets what went wrong.
int tellNoAnswer(const std::wstring& arguments)
{
    EventLog log;
    log.path = logPath(installationFolder());
    logEvent(log, L"refused",
             textField(L"reason", L"the running program does not answer: " + arguments));
    return 1;
}

int start(const std::wstring& arguments)
{
    const Word word = readCommandLine(arguments).word;
    if (word == Word::registerFolder)
        return registerFolder(installationFolder()) ? 0 : 1;
    const Clock::time_point end = Clock::now() + lookForInstance;
    while (Clock::now() < end) {
        const OwnHandle instance = claimInstance();
        if (instance)
            return word == Word::quit ? 0 : runInstance(arguments);
        HWND window = findInstanceWindow();
        const auto isCarriedOut = window == nullptr    ? std::nullopt
                                  : word == Word::quit ? handOverQuit(window, arguments)
                                                       : handOver(window, arguments);
        if (isCarriedOut)
            return *isCarriedOut ? 0 : 1;
        Sleep(lookAgainMs);
    }
    return tellNoAnswer(arguments);
}

} // namespace
} // namespace companion

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    try {
        return companion::start(std::wstring(companion::skipProgramName(GetCommandLineW())));
    } catch (...) {
        return 1;
    }
}
