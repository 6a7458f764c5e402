// When a request may be written into a host's command file, and what became of one that was.
//
// The host's add-in holds the file open. It reads a whole request at once, then closes the file,
// which deletes it, and creates it again empty. So before and after a request the file exists and
// is empty, while one waits it is not, and for a moment in between it is missing.
#pragma once

#include <cstdint>

namespace companion {

// What one look at a command file found.
struct Sight {
    bool exists = false;
    std::uint64_t size = 0; // bytes
};

// How long a delivery goes on. A host that works takes a request within a fifth of a second, also
// while a dialog is open; the bounds only end a delivery to one that is gone or stuck.
struct DeliveryBounds {
    std::int64_t beforeWritingMs = 10000; // an earlier request still fills the file
    std::int64_t untilTakenMs = 10000;    // this request still fills the file
    std::int64_t missingMs = 2000;        // the file is missing
};

enum class Verdict {
    wait,     // look again
    write,    // write the request now
    full,     // give up: an earlier request was never taken
    missing,  // give up: there is no command file
    taken,    // done: the file is empty again
    notTaken, // give up: the request is still there
    lost      // give up: the file went away with the request
};

// Times are milliseconds: since the delivery started or the request was written, and since the
// file was last seen to exist.
Verdict judgeBeforeWriting(const Sight& sight, std::int64_t waitedMs, std::int64_t missingMs,
                           const DeliveryBounds& bounds);
Verdict judgeAfterWriting(const Sight& sight, std::int64_t waitedMs, std::int64_t missingMs,
                          const DeliveryBounds& bounds);

} // namespace companion
