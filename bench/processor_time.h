// The processor time of running programs, from Linux: for any process but the caller's own, Wine's
// GetProcessTimes gives that of the caller.
#pragma once

#include <string>

namespace bench {

// Milliseconds so far, in steps of ten, of all running processes of this program with this text in
// their command line.
double processorMsOf(const std::string& program, const std::string& text);

} // namespace bench
