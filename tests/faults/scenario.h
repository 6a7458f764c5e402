// The entry points used by the host or the Companion, each in a setting in which it works.
#pragma once

#include "faults/platform_calls.h"
#include "support/companion_double.h"
#include "support/host_fixture.h"
#include "support/sockets.h"

#include <ostream>
#include <vector>

namespace testing_support {

// The add-in's environment, reused for all scenarios.
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
    // Resets everything: the part with its operations, tools and groups, a known document of the
    // Companion's, and the add-in's variables as after a check-out. Removes files of earlier runs.
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
    void (*prepare)(FaultWorld& world);
    void (*act)(FaultWorld& world);
    // Files it may rewrite or remove, as suffixes of the names in an outcome.
    std::vector<std::wstring> replaces{};
    Callers callers = Callers::thisThread;
    bool repeats = true; // can run more than once in a process
};

const std::vector<Scenario>& scenarios();

// Used by GoogleTest.
inline void PrintTo(const Scenario& scenario, std::ostream* stream)
{
    *stream << scenario.name;
}

} // namespace testing_support
