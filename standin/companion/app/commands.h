// Carries out the commands of the command line, which the buttons use, too.
#pragma once

#include "peer/command_line.h"
#include "standin/companion/app/state.h"

namespace companion {

// Updates the list of running hosts and logs the changes. Returns whether there were any.
bool refreshHosts(State& state);

// Carries out a command that needs no window; any other does nothing and returns true. False when
// the command cannot be carried out, which is logged as refused or not-understood.
//
// For a request, true means that it is being delivered: its result is one of the events taken,
// not-taken, lost and not-sent.
bool carryOut(State& state, const peer::Command& command, const std::wstring& arguments);

} // namespace companion
