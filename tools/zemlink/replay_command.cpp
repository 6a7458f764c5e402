#include "tools/zemlink/replay_command.h"

#include "peer/installation_folder.h"
#include "peer/text.h"
#include "tools/zemlink/output.h"
#include "tools/zemlink/session/event_report.h"
#include "tools/zemlink/session/local_time.h"
#include "tools/zemlink/session/recorded_text.h"
#include "tools/zemlink/session/replay.h"

namespace zemlink {
namespace {

ReplayOptions optionsOf(const Arguments& arguments)
{
    ReplayOptions options;
    options.isAtOnce = arguments.isAtOnce;
    if (arguments.host)
        options.hosts = {*arguments.host};
    options.patienceMs = arguments.timeoutMs.value_or(options.patienceMs);
    return options;
}

Outcome outcomeOf(const Arguments& arguments, const ReplayResult& result)
{
    Report report{{"recording", arguments.path},
                  {"carriedOut", result.carriedOut},
                  {"failures", result.failures},
                  {"compared", result.compared},
                  {"differences", Report::array()}};
    for (const Difference& difference : result.differences)
        report["differences"].push_back(differenceReport(difference));
    return {report, result.failures.empty() && result.differences.empty() ? done : problem};
}

} // namespace

Outcome replayRecording(const Arguments& arguments)
{
    const std::wstring folder = peer::readInstallationFolder().path;
    const Recording recording = relocated(readRecording(peer::fromUtf8(arguments.path)), folder);
    const auto show = [&](const ExchangeEvent& event) {
        if (!arguments.isJson)
            print(Stream::output,
                  localTimeOfDay(event.at) + "  " + exchangeEventText(event) + '\n');
    };
    return outcomeOf(arguments, replay(recording, folder, optionsOf(arguments), show));
}

} // namespace zemlink
