// A real host that runs the steps of a plan. Any deviation from the plan fails the test.
#pragma once

#include "life/soak_plan.h"
#include "support/companion_program.h"
#include "support/counts.h"
#include "support/host_program.h"
#include "life/life_table.h"

#include <memory>

namespace testing_support {

// Reads the lines appended to a file.
class FileTail {
public:
    explicit FileTail(std::wstring path) : path_(std::move(path)) {}

    // The complete lines added since the last call; the file is UTF-8.
    Lines newLines();

private:
    const std::wstring path_;
    std::int64_t offset_ = 0;
};

// State shared by the hosts of a soak.
struct SoakCompany {
    const Installation& installation;
    FileTail log; // the Companion's
    // For each event, how often it is planned minus how often it occurred. Events are in short
    // form: without date and time and without values that are not known in advance (duration,
    // Companion process, size of a line or program, name of an exchange file).
    std::map<std::wstring, int> openEvents{};
    // Commits run one at a time: two hosts that find the same end of the commit file overwrite each
    // other's records, and they share one screen picture.
    const void* committing = nullptr;
    // Two check-outs in the same second would use the same file name.
    unsigned long long checkedOutAt = 0; // milliseconds

    // Reads the new log lines.
    void readEvents();
};

class SoakedHost {
public:
    // Starts the host with this number, counted from 0, and waits until it is ready.
    SoakedHost(SoakCompany& company, unsigned number, std::uint64_t seed);

    // Continues the current step; starts the next one if `withNextStep`. Never waits.
    void goOn(bool withNextStep);
    bool isBetweenSteps() const { return !isStepOn_; }
    size_t steps() const { return steps_; }

    // Records the resources held by the process between steps.
    void noteHeld();
    // Waits until the process holds exactly the recorded resources plus those its calls left open
    // on purpose, and prints the counts.
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
    Lines arrived_; // trace lines of the current step
    size_t act_ = 0;
    bool isActBegun_ = false;
    bool isStepOn_ = false;
    size_t steps_ = 0;
    unsigned long long begunAt_ = 0; // milliseconds
    std::unique_ptr<Process> start_; // starts the Companion
    ProcessCounts heldBefore_;
    size_t traceBytesBefore_ = 0;
    LeftOpen onPurpose_;
};

} // namespace testing_support
