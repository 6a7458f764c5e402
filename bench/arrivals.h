// When a request was written and when it arrived.
#pragma once

#include <string>

namespace bench {

// Records the arrival of the current request; only the first call per request counts. Any thread.
void noteArrival();

// Writes the request into the command file and gives the milliseconds from closing the file to the
// arrival, which another thread records. Ends the program when the request cannot be written or
// does not arrive.
double deliver(const std::wstring& commandFile, const std::string& request);

} // namespace bench
