// What the Companion's event log, `sys\companion.log`, shows of what the Companion has taken.
#pragma once

#include "tools/zemlink/reports/companion_history.h"
#include "tools/zemlink/session/log_tail.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zemlink {

// An event, and the place among all events at which to find it again.
struct LoggedCommit {
    size_t place = 0;
    std::string id{}; // as written; empty: none
};

// The events since it was made. For one thread.
class CompanionEventLog {
public:
    // `path`: of the log, which need not exist. What it has now is left out.
    explicit CompanionEventLog(std::wstring path);

    // Whether the Companion writes events.
    bool exists();
    // The number of events so far.
    size_t size();
    // The `commit` events of this file, UTF-8, from this place on.
    std::vector<LoggedCommit> commitsOf(std::string_view file, size_t from = 0);
    // Whether any file was committed from this place on.
    bool hasCommits(size_t from);
    // Whether there is an event of this name with a field of this value.
    bool has(std::string_view event, std::string_view field, std::string_view value);

private:
    void read();

    LogTail tail_;
    CompanionEvents events_{};
};

} // namespace zemlink
