// What the running instance holds. The thread of the window owns it; the event log, the
// deliveries and the line listener guard themselves.
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
    std::vector<peer::Host> hosts;                  // as last looked for
    std::map<std::uint32_t, std::wstring> sentFile; // by host: name of the file last sent to it
    DeliveryDesk deliveries;
    NoticeReceiver lines;
};

} // namespace companion
