#include "incoming/pending_request.h"

#include "formats/wire_constants.h"

#include <atomic>

namespace torvapdm {

namespace {

// A request changes hands as a whole, in one exchange of the pointer, so that a request stored
// while another is being taken is neither mixed with it nor lost to its clearing. Only the thread
// that exchanged the pointer out of the slot dereferences it.
std::atomic<CompanionFile*> slot{nullptr};

std::unique_ptr<CompanionFile> exchange(std::unique_ptr<CompanionFile> next)
{
    return std::unique_ptr<CompanionFile>(slot.exchange(next.release()));
}

} // namespace

void storePendingRequest(std::unique_ptr<CompanionFile> request)
{
    if (request->id == noRequestId || request->path.empty())
        request.reset();
    exchange(std::move(request));
}

bool isRequestPending()
{
    return slot.load() != nullptr;
}

std::optional<CompanionFile> takePendingRequest()
{
    const std::unique_ptr<CompanionFile> request = exchange(nullptr);
    if (!request)
        return std::nullopt;
    return std::move(*request);
}

void clearPendingRequest()
{
    exchange(nullptr);
}

} // namespace torvapdm
