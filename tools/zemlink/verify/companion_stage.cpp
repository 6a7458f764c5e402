#include "tools/zemlink/verify/companion_stage.h"

#include "peer/commit_record.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/notice.h"
#include "peer/notice_port.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "tools/zemlink/verify/notice_connection.h"

#include <algorithm>

namespace zemlink {
namespace {

constexpr std::string_view partContent = "made by zemlink verify\n";
constexpr int mostRestarts = 3;

std::wstring folderOf(const std::wstring& program)
{
    return program.substr(0, program.find_last_of(L"\\/"));
}

void refuseTakenPort()
{
    peer::NoticeListener listener;
    if (const int error = peer::openNoticePort(listener))
        throw PortIsInUse(error);
}

} // namespace

CompanionStage::CompanionStage(const CompanionToVerify& companion, HANDLE stop)
    : companion_(companion),
      folder_(folderOf(companion.program)),
      waiting_(stop, companion.boundMs),
      registered_(folder_),
      log_(peer::logPath(folder_)),
      host_(folder_, waiting_)
{
    refuseTakenPort();
}

CompanionStage::~CompanionStage()
{
    endPrograms();
    closeCommitFile();
    for (const std::wstring& file : made_)
        DeleteFileW(file.c_str());
}

std::int64_t CompanionStage::leftOfBound(std::int64_t since) const
{
    return std::max<std::int64_t>(since + waiting_.boundMs() - monotonicMs(), 0);
}

std::string CompanionStage::boundText() const
{
    return "within " + std::to_string(waiting_.boundMs() / 1000) + " seconds";
}

std::string CompanionStage::afterBoundText() const
{
    return "after " + std::to_string(waiting_.boundMs() / 1000) + " seconds";
}

// ---- The program

HANDLE CompanionStage::start(const std::wstring& arguments)
{
    if (!job_)
        job_ = std::make_unique<ProgramJob>();
    return job_->start(companion_.program, arguments);
}

void CompanionStage::findInstance()
{
    const HWND window = instance_ ? nullptr : peer::findInstanceWindow();
    if (!window)
        return;
    Instance found{peer::processOf(window), window};
    found.handle.reset(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE | PROCESS_QUERY_INFORMATION,
                                   FALSE, found.process));
    found.isOfJob = found.handle && job_ && job_->contains(found.handle.get());
    instance_ = std::move(found);
    wasFound_ = true;
}

void CompanionStage::waitForInstance()
{
    const bool hasBoth = waiting_.until([&] {
        findInstance();
        const bool hasSemaphore = hasNoSemaphore_ || peer::isInstanceRunning();
        return (instance_ && hasSemaphore) || !isProgramRunning();
    });
    hasNoSemaphore_ = !hasBoth && instance_;
}

const Instance* CompanionStage::instance() const
{
    const bool isRunning = instance_ && !(instance_->handle && hasEnded(instance_->handle.get()));
    return isRunning ? &*instance_ : nullptr;
}

void CompanionStage::restartIfEnded(const std::string& lastRule)
{
    if (!instance_ || instance())
        return;
    if (unexpectedEnd_.empty())
        unexpectedEnd_ = "During " + lastRule + ", " + endText(instance_->handle.get()) + '.';
    endPrograms();
    if (++restarts_ > mostRestarts)
        return;
    start(L"");
    waitForInstance();
}

bool CompanionStage::killInstance()
{
    const bool isKilled = instance_ && instance_->isOfJob &&
                          TerminateProcess(instance_->handle.get(), endedByZemlink) &&
                          waiting_.until([&] { return instance() == nullptr; });
    if (isKilled)
        instance_.reset();
    return isKilled;
}

bool CompanionStage::closeInstance()
{
    PostMessageW(instance_->window, WM_CLOSE, 0, 0);
    const bool isClosed = waiting_.until([&] { return instance() == nullptr; });
    if (isClosed)
        instance_.reset();
    return isClosed;
}

void CompanionStage::endPrograms()
{
    if (job_) {
        job_->end();
        endedJobs_.push_back(std::move(job_));
    }
    instance_.reset();
    closeCommitFile();
}

// ---- Commits

HandedCommit& CompanionStage::newCommit(std::uint32_t id)
{
    const std::wstring file =
        folder_ + L"\\tmp\\zemlink-verify-" + std::to_wstring(commits_.size() + 1) + L".mcam";
    peer::writeFile(file, partContent);
    removeLater(file);
    return newCommitOf(file, id);
}

HandedCommit& CompanionStage::newCommitOf(const std::wstring& file, std::uint32_t id)
{
    commits_.push_back(
        std::make_unique<HandedCommit>(HandedCommit{file, id, log_.size(), monotonicMs()}));
    return *commits_.back();
}

HostsCommitFile& CompanionStage::commitFile()
{
    if (!commitFile_) {
        const std::uint32_t process = instance_ ? instance_->process : 0;
        const std::wstring path = peer::commitPaths(folder_, process).live;
        commitFile_ = std::make_unique<HostsCommitFile>(path, waiting_);
        removeLater(path);
    }
    return *commitFile_;
}

bool CompanionStage::handIn(HandedCommit& commit, bool isAnnounced)
{
    commit.isAnnounced = isAnnounced;
    commit.since = monotonicMs();
    const bool isWritten = commitFile().append(peer::formatCommitRecord({commit.id, commit.file}));
    if (isWritten && isAnnounced)
        announce(commit);
    return isWritten;
}

void CompanionStage::announce(const HandedCommit& commit)
{
    sendNotice(peer::formatNotice(
        {peer::NoticeKind::commit, commit.id, peer::toAnsi(commit.file).value_or("")}));
}

bool CompanionStage::waitUntilTaken(HandedCommit& commit)
{
    const std::string file = peer::toUtf8(commit.file);
    const std::int64_t start = monotonicMs();
    commit.isTaken = commit.isTaken || waiting_.until(
                                           [&] {
                                               if (commitFile_)
                                                   commitFile_->look();
                                               return !log_.commitsOf(file, commit.from).empty();
                                           },
                                           leftOfBound(commit.since));
    if (commit.isTaken && commit.isAnnounced)
        noteReaction(monotonicMs() - start);
    return commit.isTaken;
}

Sight CompanionStage::seeTaken(HandedCommit& commit)
{
    return keptIf(waitUntilTaken(commit), "The log shows no event `commit` of " +
                                              peer::toUtf8(commit.file) + ' ' + boundText() + '.');
}

// ---- Proof that something does not happen

void CompanionStage::noteReaction(std::int64_t milliseconds)
{
    reactionMs_ = std::max(reactionMs_, milliseconds);
}

void CompanionStage::giveItTime()
{
    constexpr std::int64_t leastMs = 1000; // more than most programs let pass between two looks
    waiting_.pause(std::max(2 * reactionMs_, leastMs));
}

} // namespace zemlink
