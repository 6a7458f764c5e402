// What the commands of a script do.
#pragma once

#include "program/script.h"

#include <string>

namespace standin {

enum class Step { next, quit, timedOut, wrong };

// Carries the command out. When it is wrong, `error` says why.
Step runScriptCommand(const ScriptLine& line, std::wstring& error);

} // namespace standin
