#include "tools/zemlink/verify/addin_rules.h"

#include "peer/wire_constants.h"
#include "tools/zemlink/verify/addin_rule_groups.h"

#include <algorithm>
#include <functional>
#include <future>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace zemlink {
namespace {

// Three hosts end in three ways: by the command quit, by being killed, and after m_close.
struct EndsSeen {
    RequestsSeen requests{};
    CommitsSeen commits{};
    StartsSeen starts{};
};

constexpr char fileLeft[] = "temp\\mastercam-<process id>.dat was still there";

Sight judgeExit(const EndsSeen& seen)
{
    if (!seen.requests.cut.empty())
        return notSeen(seen.requests.cut);
    if (!seen.requests.exitCode)
        return broken("the host had not ended in time after its script");
    return keptIf(*seen.requests.exitCode == 0,
                  "its exit code was " + std::to_string(*seen.requests.exitCode));
}

Sight judgeFileGone(const EndsSeen& seen)
{
    if (!seen.requests.exitCode)
        return notSeen("the host did not end of its own accord");
    return keptIf(seen.requests.isCommandFileGone, fileLeft);
}

Sight judgeKilled(const EndsSeen& seen)
{
    if (!seen.commits.isCommandFileGone)
        return notSeen(seen.commits.cut);
    return keptIf(*seen.commits.isCommandFileGone, fileLeft);
}

Sight judgeTooLong(const EndsSeen& seen)
{
    if (!seen.commits.tooLongLeft)
        return notSeen(seen.commits.cut);
    return keptIf(*seen.commits.tooLongLeft == peer::longestRequestBytes + 1,
                  "the command file had " + std::to_string(*seen.commits.tooLongLeft) +
                      " bytes after it");
}

bool hasProperty(const HostWindow& window)
{
    return window.property != 0;
}
bool isMessageWindow(const HostWindow& window)
{
    return window.hasMessageClass;
}

// What was there before m_close and is to be gone after it.
Sight judgeWindowsLeft(const EndsSeen& seen, bool (*is)(const HostWindow&), const char* left)
{
    const std::vector<HostWindow>& before = seen.starts.windows;
    const std::vector<HostWindow>& after = seen.starts.windowsLeft;
    if (seen.starts.reached < StartStep::closed)
        return notSeen(seen.starts.cut);
    if (std::none_of(before.begin(), before.end(), is))
        return notSeen("it was not there before");
    return keptIf(std::none_of(after.begin(), after.end(), is), left);
}

Sight judgePropertyLeft(const EndsSeen& seen)
{
    return judgeWindowsLeft(seen, hasProperty,
                            "the main window still had the property after m_close");
}

Sight judgeMessageWindowLeft(const EndsSeen& seen)
{
    return judgeWindowsLeft(seen, isMessageWindow, "the message window existed after m_close");
}

Sight judgeClosedFile(const EndsSeen& seen)
{
    if (seen.starts.reached < StartStep::closed)
        return notSeen(seen.starts.cut);
    return keptIf(!seen.starts.isCommandFileLeft, fileLeft);
}

std::vector<JudgedRule<EndsSeen>> addInEndRules()
{
    return {
        {"end.exit", "Lets the host end with exit code 0.", judgeExit},
        {"end.command-file", "Removes its command file when the host ends.", judgeFileGone},
        {"end.close-command-file", "Removes its command file when it is closed.", judgeClosedFile},
        {"end.close-property", "Removes its property from the main window when it is closed.",
         judgePropertyLeft},
        {"end.close-window", "Destroys its message window when it is closed.",
         judgeMessageWindowLeft},
        {"end.killed", "Loses its command file with its process.", judgeKilled},
        {"end.too-long", "Leaves a request of more than 65,536 bytes in the file.", judgeTooLong},
    };
}

template <class Seen>
struct Timed {
    Seen seen{};
    std::int64_t tookMs = 0;
};

template <class Run>
auto timed(const Run& run)
{
    const std::int64_t start = monotonicMs();
    Timed<decltype(run())> result{run()};
    result.tookMs = monotonicMs() - start;
    return result;
}

// How a run on another thread ended, as a value: not every C++ runtime that this is built with can
// pass an exception from one thread to another.
template <class Result>
struct Outcome {
    std::optional<Result> result{};
    bool isInterrupted = false;
    std::string error{}; // otherwise
};

template <class Run>
auto outcomeOf(const Run& run)
{
    Outcome<decltype(run())> outcome;
    try {
        outcome.result = run();
    } catch (const Interrupted&) {
        outcome.isInterrupted = true;
    } catch (const std::exception& error) {
        outcome.error = error.what();
    }
    return outcome;
}

// Throws what the run has thrown.
template <class Result>
Result resultOf(Outcome<Result> outcome)
{
    if (outcome.isInterrupted)
        throw Interrupted();
    if (!outcome.result)
        throw std::runtime_error(outcome.error);
    return *std::move(outcome.result);
}

// Throws what runRequests throws, and Interrupted.
void runHosts(const AddInToVerify& addIn, HANDLE stop, const std::function<void(Findings)>& add)
{
    const Waiting waiting(stop, addIn.boundMs);
    const AddInSite site;
    std::optional<CompanionRole> role(std::in_place);
    // At the same time as the other two, because all of them mostly wait for the next poll.
    auto underWay = std::async(
        std::launch::async,
        [&] {
            const Waiting ownWaiting(stop, addIn.boundMs);
            return outcomeOf(
                [&] { return timed([&] { return runRequests(addIn, site, ownWaiting); }); });
        });
    const auto commits = timed([&] { return runCommits(addIn, site, *role, waiting); });
    role.reset();
    const auto starts = timed([&] {
        return commits.seen.isAddInOpen ? runStarts(addIn, site, waiting)
                                        : StartsSeen{.cut = commits.seen.cut};
    });
    const auto requests = resultOf(underWay.get());
    add(judged(addInOpeningRules(), requests.seen, requests.tookMs));
    for (const auto& rules : {addInRequestRules(), addInLoadRules()})
        add(judged(rules, requests.seen, 0));
    add(judged(addInCommitRules(), commits.seen, commits.tookMs));
    for (const auto& rules : {addInNoticeRules(), addInSettingRules()})
        add(judged(rules, commits.seen, 0));
    add(judged(addInStartRules(), starts.seen, starts.tookMs));
    add(judged(addInEndRules(), EndsSeen{requests.seen, commits.seen, starts.seen}, 0));
}

} // namespace

Rules addInRules()
{
    Rules rules;
    for (const Rules& each :
         {rulesOf(addInOpeningRules()), rulesOf(addInRequestRules()), rulesOf(addInLoadRules()),
          rulesOf(addInCommitRules()), rulesOf(addInNoticeRules()), rulesOf(addInSettingRules()),
          rulesOf(addInStartRules()), rulesOf(addInEndRules())})
        rules.insert(rules.end(), each.begin(), each.end());
    return rules;
}

Findings verifyAddIn(const AddInToVerify& addIn, HANDLE stop, const ShowFinding& show)
{
    Findings all;
    const auto add = [&](const Findings& findings) {
        for (const Finding& finding : findings)
            show(finding);
        all.insert(all.end(), findings.begin(), findings.end());
    };
    try {
        runHosts(addIn, stop, add);
    } catch (const Interrupted&) {
        return all; // the caller knows
    }
    return all;
}

} // namespace zemlink
