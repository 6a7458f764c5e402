// Carries out the words of a start and, with the same commands, the buttons.
#pragma once

#include "peer/command_line.h"
#include "standin/companion/app/state.h"

namespace companion {

// Looks for running hosts again and logs those that came and went. True when anything differs.
bool refreshHosts(State& state);

// Carries out a word that needs no window; every other word does nothing and gives true. False
// when the word cannot be carried out, which is then logged as refused or not understood.
//
// A request counts as carried out when it is on its way: what becomes of it is told by the events
// taken, not-taken, lost and not-sent.
bool carryOut(State& state, const peer::Command& command, const std::wstring& arguments);

} // namespace companion
