// Host operations that are told to fail or to raise, and the exception they raise. Which calls are
// told so is set through control.h.
#pragma once

#include "framework/framework.h"
#include "host/import.h"

#include <string_view>

namespace standin {

enum class Outcome { works, fails, raises };

// What the call of this operation does that starts now; counts the call. Any thread.
MCCORE_API Outcome takeOutcome(std::string_view operationName);

// Throws a `CException*`. It belongs to whoever catches it.
[[noreturn]] MCCORE_API void raiseHostException();

} // namespace standin
