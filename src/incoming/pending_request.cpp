#include "incoming/pending_request.h"

#include "incoming/window_posts.h"

#include <atomic>
#include <memory>

namespace torvapdm {

namespace {

constexpr std::int32_t noRequestId = -1;

// Whole requests change hands here in one exchange, so that a request parked while another is being
// taken is neither mixed with it nor wiped by its clearing. Only the thread that exchanged a
// pointer out looks behind it.
std::atomic<OpenRequest*> slot{nullptr};

std::unique_ptr<OpenRequest> exchange(std::unique_ptr<OpenRequest> next)
{
    return std::unique_ptr<OpenRequest>(slot.exchange(next.release()));
}

} // namespace

void parkOpenRequest(std::int32_t id, const std::wstring& path)
{
    if (id == noRequestId || path.empty())
        clearOpenRequest();
    else
        exchange(std::make_unique<OpenRequest>(OpenRequest{id, path}));
    postOpenMessage();
}

bool isRequestPending()
{
    return slot.load() != nullptr;
}

std::optional<OpenRequest> takeOpenRequest()
{
    const std::unique_ptr<OpenRequest> request = exchange(nullptr);
    if (!request)
        return std::nullopt;
    return std::move(*request);
}

void clearOpenRequest()
{
    exchange(nullptr);
}

} // namespace torvapdm
