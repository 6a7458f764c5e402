#include "tools/zemlink/session/log_events.h"

#include "peer/command_file.h"
#include "peer/commit_record.h"
#include "peer/exchange_paths.h"
#include "peer/numbers.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/session/local_time.h"

#include <algorithm>
#include <limits>
#include <map>

namespace zemlink {
namespace {

using peer::CompanionEvent;

std::string field(const CompanionEvent& event, std::string_view name)
{
    const auto found = std::ranges::find(event.fields, name, &peer::EventField::name);
    return found == event.fields.end() ? std::string() : found->value;
}

template <class Number>
Number numberIn(const CompanionEvent& event, std::string_view name)
{
    using Limits = std::numeric_limits<Number>;
    return static_cast<Number>(
        peer::parsePrintedNumber(field(event, name), Limits::min(), Limits::max()).value_or(0));
}

std::wstring textIn(const CompanionEvent& event, std::string_view name)
{
    return peer::fromUtf8(field(event, name));
}

int valueOf(char digit)
{
    return digit >= '0' && digit <= '9'   ? digit - '0'
           : digit >= 'A' && digit <= 'F' ? digit - 'A' + 10
                                          : 0;
}

std::string bytesOfHex(std::string_view hex)
{
    std::string bytes;
    for (size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes += static_cast<char>(valueOf(hex[i]) * 16 + valueOf(hex[i + 1]));
    return bytes;
}

// Of `sent`, `new-file` and `check-in`.
std::string requestOf(const CompanionEvent& event)
{
    const auto id = numberIn<std::int32_t>(event, "id");
    if (event.name == "new-file")
        return peer::formatNewFileRequest(id);
    if (event.name == "check-in")
        return peer::formatCheckIn(textIn(event, "name"));
    return peer::formatOpenRequest(id, textIn(event, "file")).value_or("");
}

// Reads the log event by event and remembers each host's last request.
class LogReader {
public:
    explicit LogReader(const std::wstring& folder) : folder_(folder) {}

    std::optional<ExchangeEvent> read(const CompanionEvent& event)
    {
        const auto host = numberIn<std::uint32_t>(event, "host");
        const std::wstring commandFile = peer::commandFilePath(folder_, host);
        if (event.name == "started") {
            companion_ = numberIn<std::uint32_t>(event, "pid");
            return made(EventKind::companionStarted, companion_);
        }
        if (event.name == "stopped")
            return made(EventKind::companionEnded, companion_);
        if (event.name == "host-found")
            return made(EventKind::hostStarted, host);
        if (event.name == "host-gone")
            return made(EventKind::hostEnded, host);
        if (event.name == "settings")
            return made(EventKind::machineSettingsWritten, host, textIn(event, "file"));
        if (auto request = findRequest(event, folder_)) {
            requests_[host] = request->bytes;
            return request;
        }
        if (event.name == "taken")
            return made(EventKind::requestTaken, host, commandFile, requests_[host]);
        if (event.name == "commit" && !field(event, "from").empty())
            return commit(event);
        return findNotice(event);
    }

private:
    static ExchangeEvent made(EventKind kind, std::uint32_t process, const std::wstring& file = {},
                              const std::string& bytes = {})
    {
        return {0, kind, process, file, bytes};
    }

    ExchangeEvent commit(const CompanionEvent& event) const
    {
        const std::wstring name = textIn(event, "from");
        const std::uint32_t id =
            field(event, "id").empty() ? peer::noZemId : numberIn<std::uint32_t>(event, "id");
        return made(EventKind::commitTaken, peer::processOfCommitFile(name).value_or(0),
                    folder_ + peer::tempFolder + L'\\' + name,
                    peer::formatCommitRecord({id, textIn(event, "file")}));
    }

    const std::wstring& folder_;
    std::uint32_t companion_ = 0;
    std::map<std::uint32_t, std::string> requests_;
};

} // namespace

std::optional<ExchangeEvent> findNotice(const peer::CompanionEvent& event)
{
    const auto at = parseLocalTime(event.time);
    const std::string bytes = bytesOfHex(field(event, "hex"));
    // Programs test the port with connections without bytes.
    if (event.name != "line" || bytes.empty() || !at)
        return std::nullopt;
    return ExchangeEvent{*at, EventKind::notice, 0, L"", bytes};
}

std::optional<ExchangeEvent> findRequest(const peer::CompanionEvent& event,
                                         const std::wstring& folder)
{
    if (event.name != "sent" && event.name != "new-file" && event.name != "check-in")
        return std::nullopt;
    const auto host = numberIn<std::uint32_t>(event, "host");
    return ExchangeEvent{parseLocalTime(event.time).value_or(0), EventKind::requestWritten, host,
                         peer::commandFilePath(folder, host), requestOf(event)};
}

std::optional<ExchangeEvent> findTaking(const peer::CompanionEvent& event)
{
    const auto at = parseLocalTime(event.time);
    if (event.name != "taken" || !at)
        return std::nullopt;
    return ExchangeEvent{*at, EventKind::requestTaken, numberIn<std::uint32_t>(event, "host")};
}

std::vector<ExchangeEvent> eventsOfLog(std::string_view bytes, const std::wstring& folder)
{
    std::vector<ExchangeEvent> events;
    LogReader reader(folder);
    for (const auto& logged : peer::parseCompanionLog(bytes)) {
        auto event = logged ? reader.read(*logged) : std::nullopt;
        const auto at = event ? parseLocalTime(logged->time) : std::nullopt;
        if (!at)
            continue;
        event->at = *at;
        events.push_back(std::move(*event));
    }
    return events;
}

} // namespace zemlink
