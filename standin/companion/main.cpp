// The program's entry point: it becomes the running instance, or hands its arguments to the running
// one.
#include "peer/exchange_paths.h"
#include "peer/running_programs.h"
#include "peer/wire_constants.h"
#include "standin/companion/app/commands.h"
#include "standin/companion/app/installation.h"
#include "standin/companion/log/event_text.h"
#include "standin/companion/ui/window.h"
#include "standin/console/console.h"

#include <chrono>

namespace companion {
namespace {

using Clock = std::chrono::steady_clock;

// The instance exists before its window is created and for a moment after it is destroyed.
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
    state.log.path = peer::logPath(state.folder);
    state.deliveries.log = &state.log;
    createSubfolders(state.folder);
    logEvent(state.log, L"started",
             textField(L"folder", state.folder) + numberField(L"pid", GetCurrentProcessId()));
    state.copies = readCopyList(peer::workingCopiesPath(state.folder));
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

// A message box would block a script, so the error is logged.
int logNoAnswer(const std::wstring& arguments)
{
    EventLog log;
    log.path = peer::logPath(installationFolder());
    logEvent(log, L"refused",
             textField(L"reason", L"the running program does not answer: " + arguments));
    standin::printText(standin::Output::error, L"The running TORVA ZEM does not answer.");
    return 1;
}

int registerThisFolder()
{
    const std::wstring folder = installationFolder();
    if (registerFolder(folder))
        return 0;
    standin::printText(standin::Output::error, L"The folder cannot be registered: " + folder);
    return 1;
}

int reportHandedOver(bool isCarriedOut, peer::Word word)
{
    if (!isCarriedOut && word != peer::Word::notUnderstood)
        standin::printText(standin::Output::error,
                           L"Not carried out; the window and sys\\companion.log show why.");
    return isCarriedOut ? 0 : 1;
}

int start(const std::wstring& arguments)
{
    const peer::Word word = peer::parseCommandLine(arguments).word;
    if (word == peer::Word::help) {
        standin::printOrShow(standin::Output::result,
                             L"TORVA-ZEM.exe [COMMAND]\n\n" + peer::commandLineHelp(),
                             peer::productName);
        return 0;
    }
    if (word == peer::Word::registerFolder)
        return registerThisFolder();
    if (word == peer::Word::notUnderstood)
        standin::printText(standin::Output::error,
                           L"Not understood: " + arguments +
                               L". TORVA-ZEM.exe --help lists the commands.");
    const Clock::time_point end = Clock::now() + lookForInstance;
    while (Clock::now() < end) {
        const peer::OwnHandle instance = peer::claimInstance();
        if (instance)
            return word == peer::Word::quit ? 0 : runInstance(arguments);
        HWND window = peer::findInstanceWindow();
        const auto isCarriedOut = window == nullptr          ? std::nullopt
                                  : word == peer::Word::quit ? peer::handOverQuit(window, arguments)
                                                             : peer::handOver(window, arguments);
        if (isCarriedOut)
            return reportHandedOver(*isCarriedOut, word);
        Sleep(lookAgainMs);
    }
    return logNoAnswer(arguments);
}

} // namespace
} // namespace companion

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    try {
        return companion::start(std::wstring(peer::skipProgramName(GetCommandLineW())));
    } catch (...) {
        return 1;
    }
}
