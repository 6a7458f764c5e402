// The pending request: the open request that the host has not taken yet. The listener stores it,
// the message window takes it, the check-out command clears it.
#pragma once

#include "formats/companion_file.h"

#include <memory>
#include <optional>

namespace torvapdm {

// Stores the request, not null, in place of any earlier one. One with id -1 or an empty path counts
// as none. Allocates nothing. Any thread.
void storePendingRequest(std::unique_ptr<CompanionFile> request);

// True while a request is stored. Any thread.
bool isRequestPending();

// Removes and returns the request; empty when there is none. UI thread.
std::optional<CompanionFile> takePendingRequest();

// Removes the request. Any thread.
void clearPendingRequest();

} // namespace torvapdm
