#include "tools/zemlink/session/redaction.h"

#include "peer/wire_constants.h"
#include "tools/zemlink/reports/decode.h"
#include "tools/zemlink/session/event_report.h"
#include "tools/zemlink/session/recorded_text.h"

#include <algorithm>

namespace zemlink {
namespace {

constexpr char hiddenByte = '?';

void makeGrey(std::string& bitmap)
{
    constexpr size_t headers = 14 + 40;
    std::fill(bitmap.begin() + static_cast<std::ptrdiff_t>(std::min(headers, bitmap.size())),
              bitmap.end(), '\x80');
}

// Whether the exchange is what it should be. One step of a load is not a whole log.
bool isSound(const ExchangeEvent& event)
{
    if (event.kind == EventKind::loadStep)
        return event.bytes.starts_with(peer::debugLogLineStart);
    const auto kind = contentOf(event.kind);
    return event.bytes.empty() || !kind || decode(*kind, event.bytes).exitCode == done;
}

void hideContent(ExchangeEvent& event)
{
    if (!isSound(event))
        event.bytes.assign(event.bytes.size(), hiddenByte);
    else if (event.kind == EventKind::pictureWritten)
        makeGrey(event.bytes);
}

} // namespace

void addNamesOf(Pseudonyms& names, const Recording& recording)
{
    names.addPath(recording.folder + L'\\');
    names.addReport(recording.status);
    for (const ExchangeEvent& event : recording.events)
        names.addReport(exchangeEventReport(event));
}

Recording redacted(Recording recording, const Pseudonyms& names)
{
    const auto replace = [&](std::wstring_view text) { return names.replaceIn(text); };
    for (ExchangeEvent& event : recording.events) {
        hideContent(event);
        changeTexts(event, replace);
    }
    recording.folder = names.replaceIn(recording.folder);
    recording.status = names.replaceInReport(recording.status);
    recording.isRedacted = true;
    return recording;
}

Recording redacted(Recording recording)
{
    Pseudonyms names;
    addNamesOf(names, recording);
    return redacted(std::move(recording), names);
}

} // namespace zemlink
