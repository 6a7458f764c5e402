// The script commands.
#pragma once

#include "program/script.h"

#include <string>

namespace standin {

enum class Step { next, quit, timedOut, wrong };

// Executes the command. Sets `error` if the command is invalid.
Step runScriptCommand(const ScriptLine& line, std::wstring& error);

} // namespace standin
