#include "tools/zemlink/session/replay.h"

#include "peer/delivery.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/session/companion_role.h"
#include "tools/zemlink/session/file_look.h"
#include "tools/zemlink/session/host_pairs.h"
#include "tools/zemlink/session/observer.h"
#include "tools/zemlink/session/sent_requests.h"

#include <chrono>
#include <map>
#include <set>
#include <stdexcept>

namespace zemlink {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::int64_t lastLookMs = 500; // for exchanges that were not recorded

std::int64_t millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
}

class Replay {
public:
    Replay(const Recording& recording, const std::wstring& folder, const ReplayOptions& options,
           const ReplayOutput& output)
        : recording_(recording),
          folder_(folder),
          options_(options),
          output_(output),
          hosts_(recording.events, options.hosts),
          events_(eventsToPlay()),
          observedHosts_(processesWithFile(folder)),
          observer_(folder)
    {
        addObserved(observer_.presentAtStart());
    }

    ReplayResult run()
    {
        output_.showReady();
        size_t passed = 0;
        for (const ExchangeEvent& event : events_) {
            if (canCarryOut(event) && !carryOutInTurn(event))
                break;
            passed_ += isCompared(event.kind);
            ++passed;
        }
        events_.resize(passed);
        waitUntil([&] { return isCaughtUp(); }, options_.patienceMs);
        waitUntil([] { return false; }, lastLookMs);
        result_.isInterrupted = isStopped();
        if (result_.isInterrupted)
            look(); // what has happened up to now
        result_.compared = passed_;
        addTakenUnseen();
        result_.differences = compareExchanges(events_, seen_);
        result_.refusedStarts = role_.refusedStarts();
        return result_;
    }

private:
    static std::set<std::uint32_t> processesWithFile(const std::wstring& folder)
    {
        std::set<std::uint32_t> processes;
        for (const std::wstring& name : listFiles(peer::commandFilePattern(folder)))
            if (const auto process = peer::processOfCommandFile(name))
                processes.insert(*process);
        return processes;
    }

    // What was there when the recording started is not repeated.
    std::vector<ExchangeEvent> eventsToPlay() const
    {
        std::vector<ExchangeEvent> events = recording_.events;
        findHostsOfSettings(events);
        std::erase_if(events, [&](const ExchangeEvent& event) {
            return event.at <= recording_.startedAt || !hosts_.isPlayed(event);
        });
        return events;
    }

    static bool canCarryOut(const ExchangeEvent& event)
    {
        return event.kind == EventKind::machineSettingsWritten ||
               event.kind == EventKind::requestWritten;
    }

    // True when the hosts have done, in number, all that they did up to here in the recording.
    bool isCaughtUp() const { return seen_.size() + countTakenUnseen() >= passed_; }

    bool isStopped() const
    {
        return options_.stop && WaitForSingleObject(options_.stop, 0) == WAIT_OBJECT_0;
    }

    bool isTimeFor(const ExchangeEvent& event) const
    {
        return options_.isAtOnce || millisecondsSince(start_) >= event.at - recording_.startedAt;
    }

    // False when the replay was stopped before it.
    bool carryOutInTurn(const ExchangeEvent& event)
    {
        waitUntil([&] { return isTimeFor(event); }, event.at - recording_.startedAt);
        waitUntil([&] { return isCaughtUp(); }, options_.patienceMs);
        if (waitUntil([&] { return carryOut(event); }, options_.patienceMs)) {
            ++result_.carriedOut;
            return true;
        }
        if (isStopped())
            return false;
        result_.failures.push_back(std::string(eventWord(event.kind)) + ": " + cause_);
        return true;
    }

    // False when it is not possible now, with the cause.
    bool carryOut(const ExchangeEvent& event)
    {
        return event.kind == EventKind::requestWritten ? sendRequest(event)
                                                       : writeMachineSettings(event);
    }

    // Nothing but machine settings is written, whatever name the recording has.
    bool writeMachineSettings(const ExchangeEvent& event)
    {
        const auto id = peer::requestOfMachineSettings(peer::fileNameOf(event.file));
        if (!id)
            cause_ = "the recorded file is not one of machine settings";
        if (!id || !findHost(event))
            return false;
        cause_ = "the file cannot be written";
        const std::wstring path = peer::machineSettingsPath(folder_, *id);
        if (!peer::replaceFile(path, event.bytes))
            return false;
        unseen_[path] = {event.bytes};
        return true;
    }

    std::optional<std::uint32_t> findHost(const ExchangeEvent& event)
    {
        const auto host = hosts_.findStandIn(event);
        if (!host)
            cause_ = "no host is running for the recorded process " + std::to_string(event.process);
        return host;
    }

    bool sendRequest(const ExchangeEvent& event)
    {
        if (event.bytes.empty() || event.bytes.size() > peer::longestRequestBytes) {
            cause_ = event.bytes.empty() ? "its content was not recorded" : "it is too long";
            return false;
        }
        const auto host = findHost(event);
        if (!host)
            return false;
        cause_ =
            "the command file of process " + std::to_string(*host) + " is missing or not empty";
        if (!observedHosts_.contains(*host) ||
            !peer::writeRequest(peer::commandFilePath(folder_, *host), event.bytes))
            return false;
        sent_.add({.process = *host, .bytes = event.bytes});
        return true;
    }

    // A host can take machine settings before the observer has seen them.
    void lookForUnseen(const std::vector<ExchangeEvent>& events)
    {
        for (const ExchangeEvent& event : events)
            if (event.kind == EventKind::machineSettingsWritten)
                unseen_.erase(event.file);
        for (auto& [path, settings] : unseen_)
            if (settings.takenAt == 0 && !peer::isFile(path))
                settings.takenAt = currentTime();
    }

    size_t countTakenUnseen() const
    {
        return static_cast<size_t>(std::ranges::count_if(
            unseen_, [](const auto& entry) { return entry.second.takenAt != 0; }));
    }

    void addTakenUnseen()
    {
        for (const auto& [path, settings] : unseen_)
            if (settings.takenAt != 0)
                seen_.push_back(
                    {settings.takenAt, EventKind::machineSettingsTaken, 0, path, settings.bytes});
    }

    // Looks at what the hosts do until the condition holds; false when it did not in time. Does not
    // even try once it is stopped, because the condition may be that something has been sent.
    template <class Condition>
    bool waitUntil(const Condition& condition, std::int64_t boundMs)
    {
        const Clock::time_point start = Clock::now();
        for (; !isStopped(); look()) {
            if (condition())
                return true;
            if (millisecondsSince(start) >= boundMs)
                break;
        }
        return false;
    }

    void addObserved(const std::vector<ExchangeEvent>& events)
    {
        for (const ExchangeEvent& event : events)
            if (event.kind == EventKind::hostStarted)
                observedHosts_.insert(event.process);
    }

    void look()
    {
        constexpr std::int64_t withoutWaiting = 0; // the port is waited for instead
        std::vector<ExchangeEvent> events = observer_.wait(withoutWaiting);
        sent_.complete(events);
        lookForUnseen(events);
        addObserved(events);
        for (ExchangeEvent& notice : role_.receive())
            events.push_back(std::move(notice));
        std::erase_if(events, [&](const ExchangeEvent& event) { return !hosts_.isPlaying(event); });
        for (ExchangeEvent& event : events) {
            output_.show(event);
            if (isCompared(event.kind))
                seen_.push_back(std::move(event));
        }
    }

    const Recording& recording_;
    const std::wstring folder_;
    const ReplayOptions& options_;
    const ReplayOutput& output_;
    const Clock::time_point start_ = Clock::now();
    HostPairs hosts_;
    std::vector<ExchangeEvent> events_; // of the recording
    CompanionRole role_;
    // Those whose command files have been looked at, also files that earlier processes left: one
    // that is first seen after a request was taken does not show that there was one.
    std::set<std::uint32_t> observedHosts_;
    Observer observer_;
    struct Settings {
        std::string bytes{};
        std::int64_t takenAt = 0; // 0: the file exists
    };

    SentRequests sent_{};
    std::map<std::wstring, Settings> unseen_{}; // machine settings written here, by path
    std::string cause_{};
    size_t passed_ = 0; // recorded exchanges of hosts that come before the present one
    std::vector<ExchangeEvent> seen_{};
    ReplayResult result_{};
};

} // namespace

void checkReplayable(const Recording& recording)
{
    if (recording.isRedacted)
        throw std::runtime_error("a redacted recording cannot be replayed: its names are no files");
}

ReplayResult replay(const Recording& recording, const std::wstring& folder,
                    const ReplayOptions& options, const ReplayOutput& output)
{
    return Replay(recording, folder, options, output).run();
}

} // namespace zemlink
