// The third host: the starts of the Companion, and the end of the add-in.
#pragma once

#include "tools/zemlink/verify/addin_host.h"
#include "tools/zemlink/verify/addin_site.h"
#include "tools/zemlink/verify/addin_trace.h"
#include "tools/zemlink/verify/recorded_start.h"
#include "tools/zemlink/verify/waiting.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zemlink {

// How far the host came.
enum class StartStep {
    addInOpen,
    notRunning, // about and check-out
    noWindow,   // a commit
    noId,       // a commit after a request with the id -1
    notInstalled,
    closed
};

// What was seen. Texts are UTF-8.
struct StartsSeen {
    std::string committed{}; // the document, by its path
    StartStep reached = StartStep::addInOpen;
    std::string cut{}; // why it went no further; empty: it went all the way
    HostTrace trace{};
    std::vector<RecordedStart> starts{};
    std::vector<HostWindow> windows{}; // while the add-in was open
    std::wstring temporaryFolder{};    // the user's, with a backslash at its end

    // After m_close, while the host was still running.
    std::vector<HostWindow> windowsLeft{};
    bool isCommandFileLeft = false;
};

// The caller must not have the Companion's place. Throws std::runtime_error and Interrupted.
StartsSeen runStarts(const AddInToVerify& addIn, const AddInSite& site, const Waiting& waiting);

} // namespace zemlink
