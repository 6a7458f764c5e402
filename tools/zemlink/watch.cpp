#include "tools/zemlink/watch.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/installation_folder.h"
#include "peer/text.h"
#include "tools/zemlink/interruption.h"
#include "tools/zemlink/output.h"
#include "tools/zemlink/session/event_report.h"
#include "tools/zemlink/session/local_time.h"
#include "tools/zemlink/session/log_events.h"
#include "tools/zemlink/session/observer.h"

#include <algorithm>
#include <limits>

namespace zemlink {
namespace {

// Where an event comes from.
enum class Origin { log, start, now };

// Each line is printed with one call, so that the end of the program never cuts one.
class EventPrinter {
public:
    explicit EventPrinter(const Arguments& arguments) : arguments_(arguments) {}

    void showStart(const Observer& observer, const std::wstring& folder) const
    {
        const std::string name = peer::toUtf8(folder);
        printLine(Report{{"watching", name}}, "watching " + visible(name));
        for (const std::string& limit : observer.limits())
            showRemark(limit);
    }
    void showLost(size_t events) const
    {
        if (events != 0)
            showRemark(std::to_string(events) +
                       " events were lost: the output was not read in time.");
    }

    void show(const std::vector<ExchangeEvent>& events, Origin origin)
    {
        for (const ExchangeEvent& event : events)
            if (!isEnough() && isWanted(event.kind)) {
                showEvent(event, origin);
                ++shown_;
            }
    }

    bool isEnough() const { return arguments_.count && shown_ >= *arguments_.count; }

private:
    void showRemark(const std::string& remark) const
    {
        printLine(Report{{"remark", remark}}, "remark: " + visible(remark));
    }

    bool isWanted(EventKind kind) const
    {
        const auto& only = arguments_.only;
        return only.empty() || std::ranges::find(only, kind) != only.end();
    }

    void showEvent(const ExchangeEvent& event, Origin origin) const
    {
        Report report{{"time", universalTime(event.at)}};
        if (origin != Origin::now)
            report[origin == Origin::start ? "presentAtStart" : "fromLog"] = true;
        report.update(exchangeEventReport(event));
        const char* const words = origin == Origin::start ? "present at the start: "
                                  : origin == Origin::log ? "from the log: "
                                                          : "";
        printLine(report, (origin == Origin::log ? localDate(event.at) + ' ' : "") +
                              localTimeOfDay(event.at) + "  " + words + exchangeEventText(event));
    }

    void printLine(const Report& report, const std::string& text) const
    {
        print(Stream::output,
              (arguments_.isJson ? report.dump(-1, ' ', false, Report::error_handler_t::replace)
                                 : text) +
                  '\n');
    }

    const Arguments& arguments_;
    std::int64_t shown_ = 0;
};

// The past, up to the start of watching.
std::vector<ExchangeEvent> pastEvents(const std::wstring& folder, std::int64_t since,
                                      std::int64_t until)
{
    const std::string log = peer::readFile(peer::logPath(folder)).value_or("");
    std::vector<ExchangeEvent> events = eventsOfLog(log, folder);
    std::erase_if(
        events, [&](const ExchangeEvent& event) { return event.at < since || event.at >= until; });
    return events;
}

} // namespace

Outcome watch(const Arguments& arguments)
{
    const Interruption interruption;
    const std::wstring folder = peer::readInstallationFolder().path;
    Observer observer(folder);
    EventPrinter printer(arguments);
    printer.showStart(observer, folder);
    if (arguments.since)
        printer.show(pastEvents(folder, *arguments.since, observer.startedAt()), Origin::log);
    printer.show(observer.presentAtStart(), Origin::start);
    const ULONGLONG start = GetTickCount64();
    while (!printer.isEnough() && !interruption.isRequested()) {
        const auto passed = static_cast<std::int64_t>(GetTickCount64() - start);
        const std::int64_t left =
            arguments.timeoutMs.value_or(std::numeric_limits<std::int64_t>::max()) - passed;
        if (left <= 0)
            break;
        printer.show(observer.wait(left, interruption.handle()), Origin::now);
        printer.showLost(observer.takeLost());
    }
    return {Report(), arguments.count && !printer.isEnough() ? problem : done};
}

} // namespace zemlink
