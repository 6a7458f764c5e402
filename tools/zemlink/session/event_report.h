// An event as a report and as a line of text.
#pragma once

#include "tools/zemlink/reports/exchange_kind.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/session/exchange_event.h"

#include <optional>
#include <string>
#include <string_view>

namespace zemlink {

// What the bytes of such an event are; empty for an event without bytes.
std::optional<ExchangeKind> contentOf(EventKind kind);

// `event`, `by` (`host` or `companion`), `to` if something goes to the other side, `process` (null
// when unknown), and if present `file`, `bytes` (their number) and `meaning`, which is as `decode`
// shows it. The caller adds the time.
Report exchangeEventReport(const ExchangeEvent& event);

// The event in one line without its time:
// `host 4711 <- Companion  request: open id 17 C:\TORVA\ZEM\work\bracket.mcam`. UTF-8; the texts
// are passed through `visible`.
std::string exchangeEventText(const ExchangeEvent& event);

} // namespace zemlink
