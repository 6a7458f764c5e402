// A host that is handed one command file after the other.
#pragma once

#include "endtoend/command_file_plan.h"
#include "support/host_program.h"

#include <vector>

namespace testing_support {

class CommandFileRun {
public:
    // Starts a host of this name. The last file opens the part after which the host closes.
    CommandFileRun(const Installation& installation, const std::wstring& name,
                   std::vector<PlannedFile> files);

    // Hands the next file over, once the last one has been taken and its lines are in the trace.
    // Never waits.
    void goOn();
    // All files are through, or the one that was handed over last has been waited for too long.
    bool isAtEnd() const { return isLost_ || (done_ && sent_ == files_.size()); }

    // Expects all files to have had their effect, and the host to close after them.
    void expectPlanned() const;

private:
    bool isThroughWithTheLast() const;

    const Installation& installation_;
    const std::wstring tracePath_;
    const std::vector<PlannedFile> files_;
    HostProgram host_;
    size_t sent_ = 0;
    std::uint64_t plannedTraceSize_; // of what the files so far leave in the trace
    unsigned long long sentAt_;      // milliseconds
    bool done_ = false;
    bool isLost_ = false;
};

} // namespace testing_support
