// Open requests that a host has taken and whose machine settings are still in temp.
#pragma once

#include "tools/zemlink/reports/facts.h"

#include <string>
#include <vector>

namespace zemlink {

enum class RequestState {
    notTaken,    // it is in a command file
    loading,     // the host has begun to open the file
    pending,     // the host is not ready for it
    superseded,  // another request for the same host has replaced it
    hostEnded,   // with the request
    fileMissing, // the host found no such file
    notOpened,   // the host could not open the file
    unknown      // its host is not known
};

struct TakenRequest {
    std::wstring settings{}; // the path of the machine settings
    std::int32_t id = 0;
    std::uint32_t host = 0; // process id; 0: unknown
    std::string file{};     // UTF-8; empty: unknown
    RequestState state = RequestState::unknown;
};

// In order of id. Host and file are known from the Companion's log, or else the only host.
std::vector<TakenRequest> takenRequests(const Facts& facts);

} // namespace zemlink
