// Events from the Companion's log.
#pragma once

#include "peer/companion_log.h"
#include "tools/zemlink/session/exchange_event.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zemlink {

// A notice, with its bytes. Empty for any other event of the log.
std::optional<ExchangeEvent> findNotice(const peer::CompanionEvent& event);

// A request that the Companion has written, with its bytes. Empty for any other event of the log.
std::optional<ExchangeEvent> findRequest(const peer::CompanionEvent& event,
                                         const std::wstring& folder);

// A host has taken the last request that was written to it. Empty for any other event of the log.
std::optional<ExchangeEvent> findTaking(const peer::CompanionEvent& event);

// The past, in the order of the log: the Companion's and the hosts' start and end, requests with
// the bytes that they had, commits that were taken, notices; of machine settings only that they
// were written. Load steps, pictures, NC queues, tool data and answers are not in the log.
std::vector<ExchangeEvent> eventsOfLog(std::string_view bytes, const std::wstring& folder);

} // namespace zemlink
