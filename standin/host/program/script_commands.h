// The script commands.
#pragma once

#include "program/script.h"

#include <string>

namespace standin {

enum class Step { next, quit, timedOut, wrong };

// One line for each command, with its values and its effect, from the table that the commands are
// found in.
std::wstring scriptCommandHelp();

// Executes the command. Sets `error` if the command is invalid.
Step runScriptCommand(const ScriptLine& line, std::wstring& error);

} // namespace standin
