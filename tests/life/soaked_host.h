// A real host that is put through the steps of a plan.
#pragma once

#include "support/companion_program.h"
#include "support/host_program.h"
#include "life/companion_events.h"
#include "life/held_by_host.h"
#include "life/soak_plan.h"

#include <memory>

namespace testing_support {

// What the hosts of a soak have in common.
struct SoakCompany {
    const Installation& installation;
    CompanionEvents events;
    // Commits go one after the other: two hosts that find the same end of the request file write
    // over each other, and there is one screen picture for all of them.
    const void* committing = nullptr;
    // Two check-outs of one second would ask for a file of the same name.
    unsigned long long checkedOutAt = 0; // milliseconds
};

class SoakedHost {
public:
    // Starts the host under this number, from 0, and waits until it is ready.
    SoakedHost(SoakCompany& company, unsigned number, std::uint64_t seed);

    // Goes on with the step, and begins the next one if that is wanted. Never waits.
    void goOn(bool withNextStep);
    bool isBetweenSteps() const { return !isStepOn_; }
    size_t steps() const { return steps_; }
    std::string name() const { return "host " + std::to_string(number_); }

    // What went otherwise than planned, with the seed and the step; empty when nothing did.
    const std::string& complaint() const { return complaint_; }
    // What the process holds; between steps.
    HeldByHost& held() { return held_; }
    // Closes the host. Says what was wrong with that.
    std::string close();

    const SoakPlan& plan() const { return *plan_; }

private:
    void begin();
    bool hasItsTurn();
    void act();
    bool isActDone(const Act& act);
    bool isRequestWritten(const Act& act) const;
    bool isRequestTaken() const;
    bool isOver();
    void end();
    void complain(const std::string& what);
    void complainOfLateness();
    std::string firstDifference() const;
    std::string missingVersion();

    SoakCompany& company_;
    const unsigned number_;
    const std::uint64_t seed_;
    HostProgram host_;
    FileTail trace_;
    HeldByHost held_;
    std::unique_ptr<SoakPlan> plan_;
    PlannedStep step_;
    Lines arrived_; // of the step's trace
    size_t act_ = 0;
    bool isActBegun_ = false;
    bool isStepOn_ = false;
    size_t steps_ = 0;
    unsigned long long begunAt_ = 0; // milliseconds
    std::unique_ptr<Process> start_; // of the Companion
    std::string complaint_;
};

} // namespace testing_support
