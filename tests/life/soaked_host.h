// A real host that is put through the steps of a plan. What goes otherwise than planned fails the
// test.
#pragma once

#include "life/soak_plan.h"
#include "support/companion_program.h"
#include "support/counts.h"
#include "support/host_program.h"
#include "life/life_table.h"

#include <memory>

namespace testing_support {

// The lines that are added to a file while it is read.
class FileTail {
public:
    explicit FileTail(std::wstring path) : path_(std::move(path)) {}

    // The whole lines that came since the last call; UTF-8 in the file.
    Lines newLines();

private:
    const std::wstring path_;
    std::int64_t offset_ = 0;
};

// What the hosts of a soak have in common.
struct SoakCompany {
    const Installation& installation;
    FileTail log; // the Companion's
    // Its events as often as they were planned, less those that came. An event is in a short form,
    // without its date and time and without what cannot be known beforehand: the time that it took,
    // the Companion's process, the bytes of a line or program, the name of an exchange file.
    std::map<std::wstring, int> openEvents{};
    // Commits go one after the other: two hosts that find the same end of the request file write
    // over each other, and there is one screen picture for all of them.
    const void* committing = nullptr;
    // Two check-outs of one second would ask for a file of the same name.
    unsigned long long checkedOutAt = 0; // milliseconds

    // Reads what is new in the log.
    void readEvents();
};

class SoakedHost {
public:
    // Starts the host under this number, from 0, and waits until it is ready.
    SoakedHost(SoakCompany& company, unsigned number, std::uint64_t seed);

    // Goes on with the step, and begins the next one if that is wanted. Never waits.
    void goOn(bool withNextStep);
    bool isBetweenSteps() const { return !isStepOn_; }
    size_t steps() const { return steps_; }

    // Notes what the process holds, between steps.
    void noteHeld();
    // Waits for the process to hold no more and no less than that and what its calls left open on
    // purpose, and prints the counts.
    void expectNothingElseHeld() const;
    void close();

    const SoakPlan& plan() const { return *plan_; }

private:
    void begin();
    bool hasItsTurn();
    bool isDone(const std::wstring& act);
    bool writeRequestOf(const std::wstring& words) const;
    void end();
    size_t traceBytes() const;

    SoakCompany& company_;
    const std::wstring name_;
    HostProgram host_;
    FileTail trace_;
    std::unique_ptr<SoakPlan> plan_;
    PlannedStep step_;
    Lines arrived_; // of the step's trace
    size_t act_ = 0;
    bool isActBegun_ = false;
    bool isStepOn_ = false;
    size_t steps_ = 0;
    unsigned long long begunAt_ = 0; // milliseconds
    std::unique_ptr<Process> start_; // of the Companion
    ProcessCounts heldBefore_;
    size_t traceBytesBefore_ = 0;
    LeftOpen onPurpose_;
};

} // namespace testing_support
