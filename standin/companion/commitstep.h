// One step through a commit request file.
#pragma once

#include "requestfile.h"

namespace companion {

struct State;

// The process id under which commits of the command line are kept. No process has it, because ids
// are multiples of 4, and no host ever writes there; one that asks a window that has just gone for
// its process gets 0.
constexpr std::uint32_t commandLineProcess = 1;

enum class CommitStep {
    nothing, // nothing to do in this file now
    done,    // the first record was dealt with, or what is none was put aside
    waits    // the first record cannot be stored now
};

CommitStep takeNextCommit(State& state, RequestFile& file);

} // namespace companion
