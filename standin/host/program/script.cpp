#include "program/script.h"

#include "standin/console/console.h"
#include "control.h"
#include "core/file_bytes.h"
#include "core/text.h"
#include "program/script_commands.h"

#include <string_view>

namespace standin {

namespace {

constexpr int exitDone = 0;
constexpr int exitWrongScript = 2;
constexpr int exitTimedOut = 3;

// Removes the next line from the text and returns it without its line end.
std::wstring_view takeLine(std::wstring_view& text)
{
    const size_t end = text.find(L'\n');
    std::wstring_view line = text.substr(0, end);
    text.remove_prefix(end == std::wstring_view::npos ? text.size() : end + 1);
    if (line.ends_with(L'\r'))
        line.remove_suffix(1);
    return line;
}

bool isCommand(std::wstring_view line)
{
    return line.find_first_not_of(L" \t") != std::wstring_view::npos && line.front() != L'#';
}

ScriptLine splitLine(int number, std::wstring_view line)
{
    const size_t space = line.find(L' ');
    ScriptLine split{number, std::wstring(line.substr(0, space)), {}};
    if (space != std::wstring_view::npos)
        split.value = line.substr(space + 1);
    return split;
}

std::vector<ScriptLine> splitScript(std::wstring_view text)
{
    std::vector<ScriptLine> script;
    for (int number = 1; !text.empty(); ++number) {
        const std::wstring_view line = takeLine(text);
        if (isCommand(line))
            script.push_back(splitLine(number, line));
    }
    return script;
}

} // namespace

std::optional<std::vector<ScriptLine>> readScript(const std::wstring& path)
{
    const std::optional<std::string> bytes = readFileBytes(path);
    const std::optional<std::wstring> text = bytes ? fromUtf8(*bytes) : std::nullopt;
    if (!text)
        return std::nullopt;
    constexpr wchar_t byteOrderMark = 0xFEFF;
    std::wstring_view whole = *text;
    if (whole.starts_with(byteOrderMark))
        whole.remove_prefix(1);
    return splitScript(whole);
}

int reportScriptError(const std::wstring& text)
{
    trace(L"script error: " + text);
    return exitWrongScript;
}

std::optional<int> runScript(const std::vector<ScriptLine>& script)
{
    for (const ScriptLine& line : script) {
        std::wstring error;
        const Step step = runScriptCommand(line, error);
        if (step == Step::wrong) {
            const std::wstring text = L"line " + std::to_wstring(line.number) + L": " + error;
            printText(Output::error, L"Error in the script, " + text);
            return reportScriptError(text);
        }
        // Waiting messages are processed before the next command and may end the program.
        if (step == Step::quit || !pumpFor(0))
            return exitDone;
        if (step == Step::timedOut) {
            printText(Output::error, L"Script, line " + std::to_wstring(line.number) +
                                         L": nothing in the trace contained " + line.value);
            return exitTimedOut;
        }
    }
    return std::nullopt;
}

} // namespace standin
