// Bounded, generous waiting: a test polls for what it expects and never sleeps a fixed time.
#pragma once

#include <functional>

namespace testing_support {

// Long enough for a slow machine; a test that waits this long has failed.
constexpr unsigned generousMs = 60000;

// Runs the thread's message loop until the condition holds; false when it did not within the time.
bool waitUntil(const std::function<bool()>& condition, unsigned milliseconds = generousMs);

// Runs the thread's message loop until it is empty.
void pumpMessages();

} // namespace testing_support
