// The Companion's log, counted line by line against what was planned.
#pragma once

#include "life/file_tail.h"

#include <map>

namespace testing_support {

// An event of the log without its date and time and without what nobody can know beforehand: the
// time that it took, the Companion's process, the bytes of a line or program, the name of an
// exchange file. Empty for an event that no request brings about, such as a host that was found.
std::wstring shortEvent(const std::wstring& line);

class CompanionEvents {
public:
    explicit CompanionEvents(const std::wstring& log) : log_(log) {}

    void plan(const Lines& events);
    // Reads what is new in the log.
    void readOn();
    // Those of the events that have not come as often as they were planned, each once.
    Lines missing(const Lines& events) const;
    // What came more often or less often than planned, a line each; empty when nothing did.
    std::string complaint() const;
    size_t count() const;

private:
    FileTail log_;
    std::map<std::wstring, size_t> planned_;
    std::map<std::wstring, size_t> seen_;
};

} // namespace testing_support
