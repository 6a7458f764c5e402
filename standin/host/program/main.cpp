// The stand-in host's program: opens the window, loads the add-in, runs the script or waits for the
// user, and closes the add-in again.
#include "control.h"
#include "program/script.h"

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <windows.h>

#include <shellapi.h>

namespace {

using namespace standin;

constexpr int hostVersion = 2100;
constexpr int exitDone = 0;
constexpr int exitCannotStart = 2;

// An option that is not given is empty.
struct Options {
    std::wstring addIn;
    std::wstring part;
    std::wstring script;
    std::wstring trace;
};

std::wstring* optionOf(Options& options, std::wstring_view word)
{
    if (word == L"--addin")
        return &options.addIn;
    if (word == L"--part")
        return &options.part;
    if (word == L"--script")
        return &options.script;
    return word == L"--trace" ? &options.trace : nullptr;
}

std::optional<Options> readWords(wchar_t** words, int count)
{
    Options options;
    for (int place = 1; place < count; place += 2) {
        std::wstring* const option = optionOf(options, words[place]);
        if (!option || place + 1 == count)
            return std::nullopt;
        *option = words[place + 1];
    }
    return options;
}

// Nothing if the command line is invalid.
std::optional<Options> readOptions(const wchar_t* commandLine)
{
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(commandLine, &count);
    if (!words)
        return std::nullopt;
    std::optional<Options> options = readWords(words, count);
    LocalFree(words);
    return options;
}

// An error ends a scripted run; otherwise it is shown to the user.
std::optional<int> reportError(bool byScript, const std::wstring& text)
{
    showNote(text);
    if (byScript)
        return reportScriptError(text);
    trace(text);
    return std::nullopt;
}

std::optional<int> openFirstPart(const Options& options)
{
    if (options.part.empty() || putPart(options.part))
        return std::nullopt;
    return reportError(!options.script.empty(), L"not a part file: \"" + options.part + L'"');
}

std::optional<int> openAddIn(const Options& options)
{
    if (options.addIn.empty())
        return std::nullopt;
    if (!loadAddIn(options.addIn))
        return reportError(!options.script.empty(),
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
        return reportScriptError(L"unreadable script: \"" + options.script + L'"');
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
    const std::optional<Options> options = readOptions(GetCommandLineW());
    if (!options) {
        std::fputs("Mastercam.exe [--addin DLL] [--part FILE] [--script FILE] [--trace FILE]\n",
                   stderr);
        return exitCannotStart;
    }
    HostOptions hostOptions;
    hostOptions.tracePath = options->trace;
    hostOptions.answersMessageBoxes = !options->script.empty();
    if (!startHost(hostOptions))
        return exitCannotStart;
    const int exitCode = run(*options);
    stopHost();
    return exitCode;
}
