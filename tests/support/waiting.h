// Waiting with long timeouts: a test polls for what it expects and never sleeps for a fixed time.
#pragma once

#include <functional>

namespace testing_support {

// Long enough for a slow computer; a test that reaches this timeout has failed.
constexpr unsigned generousMs = 60000;

// Runs the thread's message loop until the condition holds; false on timeout.
bool waitUntil(const std::function<bool()>& condition, unsigned milliseconds = generousMs);

// Runs the thread's message loop until it is empty.
void pumpMessages();

} // namespace testing_support
