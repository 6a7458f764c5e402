// The first host: the start of the add-in, the requests that it takes, and its end.
#pragma once

#include "peer/delivery.h"
#include "tools/zemlink/verify/addin_host.h"
#include "tools/zemlink/verify/addin_site.h"
#include "tools/zemlink/verify/addin_trace.h"
#include "tools/zemlink/verify/waiting.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

// How far the host came.
enum class RequestStep {
    addInOpen,
    firstPart,
    otherMark,
    malformed,
    newFile,
    checkIn,
    bareCheckIn,
    missingFile,
    busy, // the main window is disabled
    backplot,
    longest,
    lastPart
};

// The parts that are opened, by their paths, UTF-8.
struct RequestParts {
    std::string first{}, marked{}, withoutId{}, afterMalformed{}, missing{}, busy{}, waits{},
        instead{}, backplot{}, last{};
};

// What was seen. Texts are UTF-8.
struct RequestsSeen {
    RequestParts parts{};
    RequestStep reached = RequestStep::addInOpen;
    std::string cut{}; // why it went no further; empty: it went all the way
    HostTrace trace{};

    // Once the add-in was open.
    std::optional<std::vector<std::string>> missingExports{}; // empty: the library is unreadable
    peer::CommandFileState commandFile{};
    std::uint32_t sharingError = 0; // of opening the command file with all access and all sharing
    std::vector<HostWindow> windows{};
    std::optional<bool> opensGreetingPort{}; // empty: another program had the port before

    // After the first part.
    bool isFirstTaken = false;
    bool haveSettingsGone = false; // the machine settings of its request
    bool haveOthersStayed = false; // those of another request
    std::string loadLog{};         // the debug log then, and at the end
    std::string loadLogAtEnd{};

    size_t checkIns = 0;     // in the trace, after the check-in with a name
    size_t bareCheckIns = 0; // and after the one without

    std::optional<std::uint32_t> exitCode{};
    bool isCommandFileGone = false; // after the end
};

inline bool hasReached(const RequestsSeen& seen, RequestStep step)
{
    return seen.reached >= step;
}
inline bool isOpened(const RequestsSeen& seen, const std::string& part)
{
    return seen.trace.has(callOf("DoFileOpen", part));
}

// In the machine settings of the first part.
inline constexpr char verifiedMachine[] = "C:\\Machines\\Mill 3-axis.mcam-mmd";

// Throws std::runtime_error when the host does not open the add-in, and Interrupted.
RequestsSeen runRequests(const AddInToVerify& addIn, const AddInSite& site, const Waiting& waiting);

} // namespace zemlink
