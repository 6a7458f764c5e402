// The stand-in host's program: opens the window, loads the add-in, runs the script or waits for the
// user, and closes the add-in again.
#include "standin/console/console.h"
#include "control.h"
#include "program/crash_report.h"
#include "program/options.h"
#include "program/script.h"
#include "program/script_commands.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>
#include <windows.h>

namespace {

using namespace standin;

constexpr int hostVersion = 2100;
constexpr int exitDone = 0;
constexpr int exitCannotStart = 2;

// An error before there is a window. A scripted run has nobody to close a message box.
void reportBadStart(bool byScript, const std::wstring& text)
{
    if (byScript)
        printText(Output::error, text);
    else
        printOrShow(Output::error, text, L"Mastercam");
}

// An error ends a scripted run; otherwise the status bar shows it and the program continues.
// `traced` is its text in the trace.
std::optional<int> reportError(bool byScript, const std::wstring& text, const std::wstring& traced)
{
    showNote(text);
    printText(Output::error, text);
    if (byScript)
        return reportScriptError(traced);
    trace(traced);
    return std::nullopt;
}

bool isFile(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// Why the file could not be used.
std::wstring fault(const std::wstring& path, const std::wstring& otherwise)
{
    return isFile(path) ? path + otherwise : L"There is no file " + path + L'.';
}

// So that an add-in does not appear to bring the libraries of the host that it imports.
void loadOtherHostLibraries()
{
    for (const wchar_t* library : {L"MCMill.dll", L"MCMachineDef.dll"})
        LoadLibraryW(library);
}

std::optional<int> openFirstPart(const Options& options)
{
    if (options.part.empty() || putPart(options.part))
        return std::nullopt;
    return reportError(!options.script.empty(),
                       L"Load failed: " + fault(options.part, L" is not a part file."),
                       L"not a part file: \"" + options.part + L'"');
}

std::optional<int> openAddIn(const Options& options)
{
    if (options.addIn.empty())
        return std::nullopt;
    if (!loadAddIn(options.addIn))
        return reportError(!options.script.empty(),
                           L"The add-in " + options.addIn + L" cannot be loaded.",
                           L"the add-in cannot be loaded: \"" + options.addIn + L'"');
    callExport("m_version", hostVersion);
    callExport("m_open", 0);
    return std::nullopt;
}

std::optional<int> runGivenScript(const Options& options,
                                  const std::optional<std::vector<ScriptLine>>& script)
{
    if (options.script.empty())
        return std::nullopt;
    if (!script)
        return reportError(true,
                           L"The script cannot be run: " + fault(options.script, L" is not UTF-8."),
                           L"unreadable script: \"" + options.script + L'"');
    const std::optional<int> exitCode = runScript(*script);
    // From here on the user closes the message boxes.
    if (!exitCode)
        answerMessageBoxes(false);
    return exitCode;
}

// Runs the program between start and stop; returns the exit code.
int run(const Options& options)
{
    const auto script = readScript(options.script);
    std::optional<int> exitCode = openFirstPart(options);
    if (!exitCode)
        exitCode = openAddIn(options);
    if (!exitCode)
        exitCode = runGivenScript(options, script);
    if (!exitCode)
        runMessageLoop();
    callExport("m_close", 0);
    return exitCode.value_or(exitDone);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    reportCrashes();
    const std::vector<std::wstring> words = commandLineWords();
    if (words.size() == 1 && words.front() == L"--help") {
        printOrShow(Output::result, optionHelp(), L"Mastercam");
        return exitDone;
    }
    const bool byScript = std::ranges::count(words, L"--script") > 0;
    std::wstring error;
    const Options options = readOptions(words, error);
    if (!error.empty()) {
        reportBadStart(byScript, error);
        return exitCannotStart;
    }
    HostOptions hostOptions;
    hostOptions.tracePath = options.trace;
    hostOptions.answersMessageBoxes = !options.script.empty();
    if (!startHost(hostOptions)) {
        reportBadStart(byScript,
                       options.trace.empty()
                           ? L"The main window cannot be opened: is there a display?"
                           : L"The trace file cannot be written, or there is no display: " +
                                 options.trace);
        return exitCannotStart;
    }
    setScriptHelp(scriptCommandHelp());
    loadOtherHostLibraries();
    const int exitCode = run(options);
    stopHost();
    return exitCode;
}
