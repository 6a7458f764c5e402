// The state of the running instance. It belongs to the thread of the window; the event log, the
// deliveries and the notice receiver are thread-safe.
#pragma once

#include "peer/running_programs.h"
#include "standin/companion/app/commits.h"
#include "standin/companion/app/deliveries.h"
#include "standin/companion/app/notices.h"
#include "standin/companion/library/library.h"
#include "standin/companion/library/working_copies.h"
#include "standin/companion/log/event_log.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace companion {

struct State {
    std::wstring folder; // installation folder
    EventLog log;
    Library library;
    CopyList copies;
    Commits commits;
    std::vector<peer::Host> hosts;                  // as last found
    std::map<std::uint32_t, std::wstring> sentFile; // by host: name of the file last sent to it
    DeliveryQueue deliveries;
    NoticeReceiver lines;
};

} // namespace companion
