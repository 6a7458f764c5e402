// Delivering a request through a host's command file.
//
// The add-in keeps the file open. It reads a whole request at once, closes the file, which deletes
// it, and creates it again empty. So the file is empty before and after a request, not empty while
// a request waits, and missing for a moment in between.
#pragma once

#include <cstdint>
#include <string>

namespace peer {

// The state of a command file.
struct CommandFileState {
    bool exists = false;
    std::uint64_t size = 0; // bytes
};

// How long a delivery may take. A working host takes a request within 200 ms, also while a dialog
// is open; these limits end a delivery to a host that has ended or hangs.
struct DeliveryBounds {
    std::int64_t beforeWritingMs = 10000; // an earlier request is still in the file
    std::int64_t untilTakenMs = 10000;    // this request is still in the file
    std::int64_t missingMs = 2000;        // the file is missing
};

enum class Verdict {
    wait,     // look again
    write,    // write the request now
    full,     // give up: an earlier request was never taken
    missing,  // give up: there is no command file
    taken,    // done: the file is empty again
    notTaken, // give up: the request is still in the file
    lost      // give up: the file disappeared with the request
};

// Times are milliseconds: since the delivery started or the request was written, and since the
// file was last seen.
Verdict judgeBeforeWriting(const CommandFileState& state, std::int64_t waitedMs,
                           std::int64_t missingMs, const DeliveryBounds& bounds);
Verdict judgeAfterWriting(const CommandFileState& state, std::int64_t waitedMs,
                          std::int64_t missingMs, const DeliveryBounds& bounds);

// Does not open the file: while we hold a handle, the host cannot create the file again after it
// has taken a request.
CommandFileState readCommandFileState(const std::wstring& path);

// Writes the whole request with one write into the existing, empty file and closes it. Never
// creates the file. False when nothing was written because the file is missing, not empty, about to
// be deleted or cannot be opened: look again and retry.
bool writeRequest(const std::wstring& path, const std::string& request);

} // namespace peer
