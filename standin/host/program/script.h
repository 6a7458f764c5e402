// Scripts: one command per line, executed in order on the UI thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace standin {

struct ScriptLine {
    int number = 0; // from 1
    std::wstring word;
    std::wstring value; // the rest of the line after one space, unchanged
};

// The commands of a script file; nothing if it cannot be read or is not UTF-8.
std::optional<std::vector<ScriptLine>> readScript(const std::wstring& path);

// Runs the script. Returns the exit code if the script ends the program, nothing if the program
// continues.
std::optional<int> runScript(const std::vector<ScriptLine>& script);

// Traces a script error and returns its exit code.
int reportScriptError(const std::wstring& text);

} // namespace standin
