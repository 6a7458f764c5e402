#include "tools/zemlink/session/replay.h"

#include "peer/delivery.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/session/companion_role.h"
#include "tools/zemlink/session/local_time.h"
#include "tools/zemlink/session/observer.h"
#include "tools/zemlink/session/sent_requests.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace zemlink {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::int64_t lastLookMs = 500; // for exchanges that were not recorded

std::int64_t millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
}

// Two lists of processes, paired by their places.
class HostPairs {
public:
    HostPairs(const Recording& recording, std::vector<std::uint32_t> hosts)
        : running_(std::move(hosts)), areGiven_(!running_.empty())
    {
        for (const ExchangeEvent& event : recording.events)
            if (event.kind == EventKind::requestWritten || event.kind == EventKind::hostStarted)
                addNew(recorded_, event.process);
    }

    // The running process in place of the recorded one; empty while there is none.
    std::optional<std::uint32_t> standInFor(std::uint32_t recorded)
    {
        if (!areGiven_)
            for (const peer::Host& host : peer::findHosts())
                addNew(running_, host.process);
        const auto found = std::find(recorded_.begin(), recorded_.end(), recorded);
        const auto place = static_cast<size_t>(found - recorded_.begin());
        return place < running_.size() ? std::optional(running_[place]) : std::nullopt;
    }

private:
    static void addNew(std::vector<std::uint32_t>& processes, std::uint32_t process)
    {
        if (std::find(processes.begin(), processes.end(), process) == processes.end())
            processes.push_back(process);
    }

    std::vector<std::uint32_t> recorded_{}, running_;
    bool areGiven_;
};

class Replay {
public:
    Replay(const Recording& recording, const std::wstring& folder, const ReplayOptions& options,
           const ReplayOutput& output)
        : recording_(recording),
          folder_(folder),
          options_(options),
          output_(output),
          hosts_(recording, options.hosts),
          observer_(folder)
    {
    }

    ReplayResult run()
    {
        output_.showReady();
        for (const ExchangeEvent& event : events_) {
            if (isStopped())
                break;
            if (canCarryOut(event))
                carryOutInTurn(event);
            passed_ += isCompared(event.kind);
        }
        waitUntil([&] { return isCaughtUp(); }, options_.patienceMs);
        waitUntil([] { return false; }, lastLookMs);
        result_.compared = passed_;
        result_.differences = compareExchanges(events_, seen_);
        result_.refusedStarts = role_.refusedStarts();
        return result_;
    }

private:
    // What was there when the recording started is not repeated.
    static std::vector<ExchangeEvent> laterEvents(const Recording& recording)
    {
        std::vector<ExchangeEvent> events = recording.events;
        std::erase_if(events,
                      [&](const ExchangeEvent& event) { return event.at <= recording.startedAt; });
        return events;
    }

    static bool canCarryOut(const ExchangeEvent& event)
    {
        return event.kind == EventKind::machineSettingsWritten ||
               event.kind == EventKind::requestWritten;
    }

    // True when the hosts have done, in number, all that they did up to here in the recording.
    bool isCaughtUp() const { return seen_.size() >= passed_; }

    bool isStopped() const
    {
        return options_.stop && WaitForSingleObject(options_.stop, 0) == WAIT_OBJECT_0;
    }

    bool isTimeFor(const ExchangeEvent& event) const
    {
        return options_.isAtOnce || millisecondsSince(start_) >= event.at - recording_.startedAt;
    }

    void carryOutInTurn(const ExchangeEvent& event)
    {
        waitUntil([&] { return isTimeFor(event); }, event.at - recording_.startedAt);
        waitUntil([&] { return isCaughtUp(); }, options_.patienceMs);
        if (waitUntil([&] { return carryOut(event); }, options_.patienceMs))
            ++result_.carriedOut;
        else
            result_.failures.push_back(std::string(eventWord(event.kind)) + ": " + cause_);
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
        cause_ =
            id ? "the file cannot be written" : "the recorded file is not one of machine settings";
        return id && peer::replaceFile(peer::machineSettingsPath(folder_, *id), event.bytes);
    }

    bool sendRequest(const ExchangeEvent& event)
    {
        if (event.bytes.empty() || event.bytes.size() > peer::longestRequestBytes) {
            cause_ = event.bytes.empty() ? "its content was not recorded" : "it is too long";
            return false;
        }
        const auto host = hosts_.standInFor(event.process);
        if (!host) {
            cause_ = "no host is running for the recorded process " + std::to_string(event.process);
            return false;
        }
        cause_ =
            "the command file of process " + std::to_string(*host) + " is missing or not empty";
        if (!peer::writeRequest(peer::commandFilePath(folder_, *host), event.bytes))
            return false;
        sent_.add({.process = *host, .bytes = event.bytes});
        return true;
    }

    // Looks at what the hosts do until the condition holds; false when it never did.
    template <class Condition>
    bool waitUntil(const Condition& condition, std::int64_t boundMs)
    {
        const Clock::time_point start = Clock::now();
        while (!condition()) {
            if (millisecondsSince(start) >= boundMs || isStopped())
                return false;
            look();
        }
        return true;
    }

    void look()
    {
        constexpr std::int64_t withoutWaiting = 0; // the port is waited for instead
        std::vector<ExchangeEvent> events = observer_.wait(withoutWaiting);
        sent_.complete(events);
        for (ExchangeEvent& notice : role_.receive())
            events.push_back(std::move(notice));
        for (ExchangeEvent& event : events) {
            output_.show(event);
            if (isCompared(event.kind))
                seen_.push_back(std::move(event));
        }
    }

    const Recording& recording_;
    const std::vector<ExchangeEvent> events_ = laterEvents(recording_);
    const std::wstring folder_;
    const ReplayOptions& options_;
    const ReplayOutput& output_;
    const Clock::time_point start_ = Clock::now();
    HostPairs hosts_;
    CompanionRole role_;
    Observer observer_;
    SentRequests sent_{};
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
