// What the running instance holds. The thread of the window owns it; the event log, the
// deliveries and the line listener guard themselves.
#pragma once

#include "commits.h"
#include "standin/companion/ui/copy_list.h"
#include "deliveries.h"
#include "event_log.h"
#include "peer/hosts.h"
#include "standin/companion/library/library.h"
#include "line_listener.h"

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
    std::vector<Host> hosts;                        // as last looked for
    std::map<std::uint32_t, std::wstring> sentFile; // by host: name of the file last sent to it
    DeliveryDesk deliveries;
    LineListener lines;
};

} // namespace companion
