// One step through a commit file.
#pragma once

#include "standin/companion/app/commit_file.h"

namespace companion {

struct State;

enum class CommitStep {
    nothing, // nothing to do in this file now
    done,    // the first record was handled, or foreign bytes were moved aside
    waits    // the first record cannot be stored now
};

CommitStep takeNextCommit(State& state, CommitFile& file);

} // namespace companion
