// Scripts: one command a line, carried out one after the other on the user-interface thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace standin {

struct ScriptLine {
    int number = 0; // from 1
    std::wstring word;
    std::wstring value; // the rest of the line behind one blank, as it stands
};

// The commands of a script file; nothing when it cannot be read or is not UTF-8.
std::optional<std::vector<ScriptLine>> readScript(const std::wstring& path);

// Runs the script. Gives the program's exit code when it ends here; nothing when the script is over
// and the program goes on.
std::optional<int> runScript(const std::vector<ScriptLine>& script);

// Says in the trace that a script is wrong, and gives the exit code for that.
int reportScriptError(const std::wstring& text);

} // namespace standin
