// What the host or the Companion asks of the add-in, each in a setting in which it would work.
#pragma once

#include "faults/platform_calls.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"
#include "support/sockets.h"

#include <ostream>
#include <vector>

namespace testing_support {

// The add-in's surroundings for one scenario after another.
class FaultWorld {
public:
    explicit FaultWorld(const Installation& installation);
    ~FaultWorld();
    FaultWorld(const FaultWorld&) = delete;
    FaultWorld& operator=(const FaultWorld&) = delete;

    std::wstring path(const std::wstring& below) const { return installation_.path(below); }
    std::wstring commandFile() const { return installation_.commandFile(GetCurrentProcessId()); }
    void runCompanion();
    void openMessageWindow();
    void openAddIn();
    // The path of the open part.
    std::wstring part() const { return path(L"parts\\a.mcam"); }
    // The part with its operations, tools and groups, a known document of the Companion's, and the
    // add-in's own values as after a check-out. What an earlier run has written is gone.
    void reset();

private:
    const Installation& installation_;
    CompanionDouble companion_;
    LineReceiver receiver_;
    bool isCompanionRunning_ = false;
    bool isOpen_ = false;
};

struct Scenario {
    std::string name;
    Callers callers;
    bool repeats; // may be run more than once in a process
    void (*prepare)(FaultWorld& world);
    void (*act)(FaultWorld& world);
    // Files that it may rewrite or remove, as the ends of their names in an outcome.
    std::vector<std::wstring> replaces;
};

const std::vector<Scenario>& scenarios();

// For GoogleTest.
inline void PrintTo(const Scenario& scenario, std::ostream* stream)
{
    *stream << scenario.name;
}

} // namespace testing_support
