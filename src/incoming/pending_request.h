// The pending open request: the one file that the Companion asked for and the host has not taken
// yet. The listener parks it, the message window takes it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace torvapdm {

struct OpenRequest {
    std::int32_t id;
    std::wstring path;
};

// Parks the request in place of any earlier one and posts the open message to the message window,
// if there is one. A request with id -1 or an empty path counts as none. Any thread.
void parkOpenRequest(std::int32_t id, const std::wstring& path);

// True while a request is parked. Any thread.
bool isRequestPending();

// Takes the request out; empty when none is parked. UI thread.
std::optional<OpenRequest> takeOpenRequest();

// Forgets the request. Any thread.
void clearOpenRequest();

} // namespace torvapdm
