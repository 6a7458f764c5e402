#include "tools/zemlink/replay_command.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/installation_folder.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "tools/zemlink/facts/gather_facts.h"
#include "tools/zemlink/facts/port_facts.h"
#include "tools/zemlink/facts/system.h"
#include "tools/zemlink/interruption.h"
#include "tools/zemlink/output.h"
#include "tools/zemlink/reports/answers.h"
#include "tools/zemlink/session/companion_role.h"
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

// The commits that hosts made meanwhile; empty when they made none.
std::string commitsLeft(const std::wstring& folder)
{
    const std::wstring file = peer::commitPaths(folder, GetCurrentProcessId()).live;
    return peer::isFile(file) ? peer::toUtf8(file) : "";
}

Outcome outcomeOf(const Arguments& arguments, const std::wstring& folder,
                  const ReplayResult& result)
{
    Report report{{"recording", arguments.path},
                  {"carriedOut", result.carriedOut},
                  {"failures", result.failures},
                  {"compared", result.compared},
                  {"differences", Report::array()}};
    for (const Difference& difference : result.differences)
        report["differences"].push_back(differenceReport(difference));
    if (result.isInterrupted)
        report["interrupted"] = true;
    if (const std::string commits = commitsLeft(folder); !commits.empty())
        report["commitsLeft"] = commits;
    if (result.refusedStarts != 0)
        report["refusedStarts"] = result.refusedStarts;
    const bool isSame = result.failures.empty() && result.differences.empty();
    return {report, isSame && !result.isInterrupted ? done : problem};
}

ReplayOutput outputOf(const Arguments& arguments)
{
    const auto printLine = [&arguments](const std::string& line) {
        if (!arguments.isJson)
            print(Stream::output, line + '\n');
    };
    return {[=, &arguments] { printLine("replaying " + visible(arguments.path) + '\n'); },
            [=](const ExchangeEvent& event) {
                printLine(localTimeOfDay(event.at) + "  " + exchangeEventText(event));
            }};
}

} // namespace

Outcome replayRecording(const Arguments& arguments)
{
    if (arguments.host) {
        const HostChoice choice = chooseHost(peer::findHosts(), arguments.host);
        if (!choice.process)
            return failure(choice.name, choice.reason, "", noHost);
    }
    const Interruption interruption;
    const std::wstring folder = peer::readInstallationFolder().path;
    const Recording recording = readRecording(peer::fromUtf8(arguments.path));
    checkReplayable(recording);
    ReplayOptions options = optionsOf(arguments);
    options.stop = interruption.handle();
    try {
        return outcomeOf(
            arguments, folder,
            replay(relocated(recording, folder), folder, options, outputOf(arguments)));
    } catch (const CompanionIsRunning& error) {
        return failure("companion-running", error.what(), "End the Companion.");
    } catch (const PortIsInUse& error) {
        return failure(
            "port-in-use",
            portTakenText(systemErrorText(error.code), portHolder(), findCompanion().isRunning), "",
            portInUse);
    }
}

} // namespace zemlink
