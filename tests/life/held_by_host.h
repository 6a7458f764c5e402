// What a host's process holds, against what it held and what its calls left open on purpose.
#pragma once

#include "support/life_table.h"
#include "support/counts.h"

#include <map>
#include <string>

namespace testing_support {

class HeldByHost {
public:
    // The trace is the one that the stand-in host also keeps in memory.
    HeldByHost(unsigned long processId, std::wstring trace);

    // Takes down what is held now; the calls count from here on.
    void takeBearings();
    // These calls were made, by the rows of the table.
    void add(const std::map<std::string, size_t>& calls);
    // Waits for the process to hold no more and no less than it should. Says what it holds
    // otherwise; empty when all is well.
    std::string complaint() const;
    // The counts then and now.
    std::string figures() const;

private:
    size_t traceBytes() const;

    const std::map<std::string, LeftOpen> table_ = lifeTable();
    const unsigned long processId_;
    const std::wstring trace_;
    ProcessCounts before_;
    size_t traceBytesBefore_ = 0;
    LeftOpen onPurpose_;
};

} // namespace testing_support
