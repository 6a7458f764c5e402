// Failures and exceptions of host operations. control.h selects the calls.
#pragma once

#include "framework/framework.h"
#include "host/import.h"

#include <string_view>

namespace standin {

enum class Outcome { works, fails, raises };

// Counts a call of this operation and returns its outcome. Any thread.
MCCORE_API Outcome takeOutcome(std::string_view operationName);

// Throws a `CException*`, which the catcher owns.
[[noreturn]] MCCORE_API void raiseHostException();

} // namespace standin
