// When a request was written and when it arrived.
#pragma once

#include <string>

namespace bench {

// Tells that the request under way has arrived; the first call for each request counts. Any thread.
void noteArrival();

// Writes the request into the command file and gives the milliseconds from the file's closing to
// the request's arrival. The arrival's thread has to be another one. Ends the program when the
// request cannot be written or does not arrive.
double deliver(const std::wstring& commandFile, const std::string& request);

} // namespace bench
