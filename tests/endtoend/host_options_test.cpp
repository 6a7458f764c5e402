// What the stand-in host prints about its options and about a start that goes wrong.
#include "support/windows.h"
#include "zemlink/tool_run.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

const std::wstring hostProgram = programFolder() + L"Mastercam.exe";

class HostOptions : public ::testing::Test {
protected:
    ToolResult run(const std::wstring& arguments) const
    {
        const ToolRun host(installation, arguments, L"host", hostProgram);
        return {host.waitForExit().value_or(STILL_ACTIVE), host.output(), host.errors()};
    }
    // A bad start ends with 2 and prints this sentence to standard error.
    void expectBadStart(const std::wstring& arguments, const std::string& sentence) const
    {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.exitCode, 2u);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, sentence + "\n");
    }
    std::wstring write(const std::wstring& name, const std::string& text) const
    {
        writeBytes(installation.path(name), text);
        return installation.path(name);
    }

    Installation installation{Registry::ofTheUser};
};

// Starts the host without a console and without standard handles.
class DetachedHost {
public:
    explicit DetachedHost(const std::wstring& arguments)
    {
        std::wstring command = quoted(hostProgram) + L' ' + arguments;
        STARTUPINFOW start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                       nullptr, &start, &information_);
    }
    ~DetachedHost()
    {
        TerminateProcess(information_.hProcess, 98);
        CloseHandle(information_.hThread);
        CloseHandle(information_.hProcess);
    }
    DetachedHost(const DetachedHost&) = delete;
    DetachedHost& operator=(const DetachedHost&) = delete;

    std::optional<DWORD> waitForExit() const
    {
        DWORD code = 0;
        const bool hasEnded = waitUntil(
            [&] { return WaitForSingleObject(information_.hProcess, 0) == WAIT_OBJECT_0; });
        return hasEnded && GetExitCodeProcess(information_.hProcess, &code) ? std::optional(code)
                                                                            : std::nullopt;
    }

private:
    PROCESS_INFORMATION information_{};
};

// The first words of the indented lines.
Lines firstWords(const std::string& text)
{
    Lines words;
    for (const std::wstring& line : linesOf(fromUtf8(text)))
        if (line.starts_with(L"  "))
            words.push_back(line.substr(2, line.find(L' ', 2) - 2));
    return words;
}

} // namespace

TEST_F(HostOptions, helpListsOptionsAndScriptCommands)
{
    const ToolResult help = run(L"--help");
    EXPECT_EQ(help.exitCode, 0u);
    EXPECT_EQ(help.errors, "");
    EXPECT_EQ(firstWords(help.output),
              (Lines{L"--addin", L"--part", L"--script", L"--trace", L"--help", L"call", L"notify",
                     L"set", L"part", L"fail", L"raise", L"choose", L"save-dialog", L"wait",
                     L"wait-for", L"show", L"quit"}));
    EXPECT_NE(help.output.find("Host states: geo_filename, db_changed, "), help.output.npos);
}

TEST_F(HostOptions, wrongWordsGiveASentence)
{
    expectBadStart(L"--bogus", "Unknown option: --bogus. Mastercam.exe --help lists the options.");
    expectBadStart(L"--part", "--part needs a value: --part FILE");
    expectBadStart(L"--script", "--script needs a value: --script FILE");
}

TEST_F(HostOptions, unusableFilesGiveASentence)
{
    const std::wstring script = write(L"a.script", "quit\n");
    const std::wstring withScript = L" --script " + quoted(script);
    const std::wstring text = write(L"text.mcam", "nothing\n");
    expectBadStart(L"--script C:\\nowhere",
                   "The script cannot be run: There is no file C:\\nowhere.");
    expectBadStart(L"--part C:\\nowhere" + withScript,
                   "Load failed: There is no file C:\\nowhere.");
    expectBadStart(L"--part " + quoted(text) + withScript,
                   "Load failed: " + toUtf8(text) + " is not a part file.");
    expectBadStart(L"--addin C:\\nowhere.dll" + withScript,
                   "The add-in C:\\nowhere.dll cannot be loaded.");
    expectBadStart(L"--trace C:\\nowhere\\trace" + withScript,
                   "The trace file cannot be written, or there is no display: C:\\nowhere\\trace");
    write(L"a.script", "quit \xFF\n");
    expectBadStart(withScript, "The script cannot be run: " + toUtf8(script) + " is not UTF-8.");
}

TEST_F(HostOptions, scriptErrorsGiveTheirLine)
{
    const std::wstring script = write(L"a.script", "# first\njump\n");
    expectBadStart(L"--script " + quoted(script),
                   "Error in the script, line 2: no such command: \"jump\"");
    write(L"a.script", "wait-for never 1\n");
    const ToolResult result = run(L"--script " + quoted(script));
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_EQ(result.errors, "Script, line 1: nothing in the trace contained never 1\n");
}

TEST_F(HostOptions, errorsAreShownWhereThereIsNoConsole)
{
    const DetachedHost host(L"--bogus");
    const HWND box = waitForWindowTitled(L"Mastercam");
    ASSERT_NE(box, nullptr);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(host.waitForExit(), 2u);
}

TEST_F(HostOptions, scriptsNeverWaitForABox)
{
    const DetachedHost host(L"--bogus --script C:\\nowhere");
    EXPECT_EQ(host.waitForExit(), 2u);
}
