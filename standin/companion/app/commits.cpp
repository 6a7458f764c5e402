#include "standin/companion/app/commits.h"

#include "peer/commit_record.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "standin/companion/app/commit_step.h"
#include "standin/companion/app/state.h"
#include "standin/companion/log/event_text.h"

#include <algorithm>
#include <chrono>

namespace companion {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds oneLook{100};

// Ended processes first, because their commits are the oldest; then the command line, which hosts
// use only while they find no running Companion; then this process.
std::vector<std::uint32_t> processesInOrder(const std::wstring& folder)
{
    const std::uint32_t self = GetCurrentProcessId();
    std::vector<std::uint32_t> processes = listCommitFiles(folder);
    std::erase_if(processes, [self](std::uint32_t process) {
        return process == self || process == peer::commandLineProcess ||
               isRunningCompanion(process);
    });
    processes.push_back(peer::commandLineProcess);
    processes.push_back(self);
    return processes;
}

CommitFile& fileOf(State& state, std::uint32_t process)
{
    const auto found = state.commits.files.find(process);
    return found != state.commits.files.end()
               ? found->second
               : state.commits.files.emplace(process, findCommitFile(state.folder, process))
                     .first->second;
}

// Closes the commit file of an ended process, and logs it if it contains commits.
void closeLeft(State& state, const CommitFile& file)
{
    if (!closeToHosts(file))
        return;
    const std::uint64_t size = peer::fileSize(file.paths.closed);
    if (size > file.bookmark.taken && file.process != peer::commandLineProcess) {
        logEvent(state.log, L"commits-left",
                 wordField(L"from", peer::fileNameOf(file.paths.live)) +
                     numberField(L"bytes", static_cast<std::int64_t>(size - file.bookmark.taken)));
    }
}

// Steps through one file until nothing is left to do, a commit waits or the time is over.
CommitStep takeFrom(State& state, CommitFile& file, Clock::time_point end, bool& isTouched)
{
    for (;;) {
        const CommitStep step = takeNextCommit(state, file);
        isTouched = isTouched || step != CommitStep::nothing;
        if (step != CommitStep::done || Clock::now() >= end)
            return step;
    }
}

// Forgets the file once it is deleted; a later one with the same name is a new one.
void forgetWhenGone(State& state, std::uint32_t process)
{
    const CommitFile& file = fileOf(state, process);
    if (!hasCommits(file) && !file.bookmark.isFinished)
        state.commits.files.erase(process);
}

} // namespace

void startCommits(State& state)
{
    closeLeft(state, fileOf(state, GetCurrentProcessId()));
}

bool handInCommit(State& state, const std::wstring& file, std::optional<std::int64_t> id)
{
    const peer::CommitRecord record{static_cast<std::uint32_t>(id.value_or(peer::noZemId)), file};
    const CommitFile& kept = fileOf(state, peer::commandLineProcess);
    if (file.size() > peer::longestCommitName ||
        !peer::appendToFile(kept.paths.live, peer::formatCommitRecord(record))) {
        logEvent(state.log, L"refused",
                 textField(L"reason", L"the commit cannot be written: " + file));
        return false;
    }
    return true;
}

CommitProgress takeCommits(State& state)
{
    const Clock::time_point end = Clock::now() + oneLook;
    CommitProgress progress;
    for (const std::uint32_t process : processesInOrder(state.folder)) {
        CommitFile& file = fileOf(state, process);
        if (process != GetCurrentProcessId())
            closeLeft(state, file);
        const CommitStep step = takeFrom(state, file, end, progress.isLibraryTouched);
        forgetWhenGone(state, process);
        if (step != CommitStep::nothing) {
            progress.isMoreWaiting = step == CommitStep::done;
            break;
        }
    }
    return progress;
}

bool takeAllCommits(State& state)
{
    while (takeCommits(state).isMoreWaiting) {
    }
    return state.commits.waitsFor.empty();
}

void finishCommits(State& state)
{
    // A host that still has the file open gets a second to write its record and close it.
    constexpr int looks = 20;
    constexpr DWORD pauseMs = 50;
    const CommitFile own = fileOf(state, GetCurrentProcessId());
    for (int look = 0; look < looks; ++look) {
        const bool isAllStored = takeAllCommits(state);
        const bool wasClosedNow = closeToHosts(own);
        if (!isAllStored || !hasCommits(own))
            return;
        Sleep(wasClosedNow ? 0 : pauseMs);
    }
}

} // namespace companion
