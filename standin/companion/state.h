// What the running instance holds. The thread of the window owns it; the event log, the
// deliveries and the line listener guard themselves.
#pragma once

#include "commits.h"
#include "copylist.h"
#include "deliveries.h"
#include "eventlog.h"
#include "hosts.h"
#include "library.h"
#include "linelistener.h"

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
