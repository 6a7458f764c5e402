// Where the rules for a Companion are checked: the program in its folder, a host in zemlink's
// place, and what the checks have handed in and found out so far.
#pragma once

#include "peer/command_file.h"
#include "peer/running_programs.h"
#include "tools/zemlink/verify/companion_events.h"
#include "tools/zemlink/verify/companion_rules.h"
#include "tools/zemlink/verify/host_role.h"
#include "tools/zemlink/verify/hosts_commit_file.h"
#include "tools/zemlink/verify/program_job.h"
#include "tools/zemlink/verify/registered_folder.h"
#include "tools/zemlink/verify/waiting.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

// The ids that no part of an installation has begin here; a Companion takes an id for its part's.
inline constexpr std::uint32_t ownIds = 990'000'000;

// A commit that hosts have handed in.
struct HandedCommit {
    std::wstring file{};
    std::uint32_t id = 0;
    size_t from = 0;          // the place among the events at which its own may be
    std::int64_t since = 0;   // when it was handed in, or could be taken at last
    bool isAnnounced = false; // by a notice
    bool isTaken = false;
};

// A running instance of the program, as hosts find it.
struct Instance {
    std::uint32_t process = 0; // of its window
    HWND window = nullptr;
    peer::OwnHandle handle{};
    bool isOfJob = false;
};

// The two starts that a host makes for a commit while the Companion is not running: one without
// arguments and, without waiting, one with the commit.
struct FirstStarts {
    HANDLE plain = nullptr, withCommit = nullptr;
    HandedCommit* commit = nullptr;
};

enum class SecondStart { plain, checkOut, commit, commitWithoutId, about, unknown };
inline constexpr size_t secondStartCount = 6;

struct SecondStarts {
    std::array<HANDLE, secondStartCount> processes{};
    HandedCommit* commit = nullptr;
    HandedCommit* commitWithoutId = nullptr;
    std::uint32_t instance = 0; // the process id of the instance that was running before them
    std::optional<peer::SemaphoreCounts> counts{}; // before them
    int terminated = 0;                            // those that did not end by themselves
};

// A request in the command file of the host in zemlink's place.
struct SeenRequest {
    std::wstring arguments{}; // of the start that wrote it
    std::string first{};      // the bytes that were seen first
    std::string bytes{};      // and in the end
    peer::HostCommand command{};
    std::optional<std::string> settings{}; // machine settings at the first sight of it
    std::optional<std::string> laterSettings{};
    bool isFileHeld = false;  // hosts have it open all the time
    bool isFileAgain = false; // it could be made again after that
};

// What checks have found out for later ones.
struct Gathered {
    FirstStarts firstStarts{};
    SecondStarts secondStarts{};
    std::vector<HandedCommit*> several{};
    bool isRecordTaken = false;
    bool isNoticeTaken = false;
    std::int64_t noticeNumber = 0;
    std::vector<SeenRequest> requests{};
    std::vector<HandedCommit*> waiting{}; // when the instance was ended
    HandedCommit* late = nullptr;         // handed in after that
    size_t eventsBeforeRestart = 0;
    std::int64_t restartedAt = 0;
    std::wstring leftCommitFile{};
    bool isClosed = false;
};

// For one thread. What it has made is removed with it: processes, parts, other files.
class CompanionStage {
public:
    // Throws what RegisteredFolder throws, PortIsInUse, and std::runtime_error.
    CompanionStage(const CompanionToVerify& companion, HANDLE stop);
    ~CompanionStage();
    CompanionStage(const CompanionStage&) = delete;
    CompanionStage& operator=(const CompanionStage&) = delete;

    const CompanionToVerify& companion() const { return companion_; }
    const std::wstring& folder() const { return folder_; }
    const Waiting& waiting() const { return waiting_; }
    // What is left of the bound that began then.
    std::int64_t leftOfBound(std::int64_t since) const;
    CompanionEventLog& log() { return log_; }
    HostRole& host() { return host_; }
    Gathered& gathered() { return gathered_; }

    // `within 10 seconds`, `after 10 seconds`
    std::string boundText() const;
    std::string afterBoundText() const;

    // ---- The program

    // Starts it with these arguments.
    HANDLE start(const std::wstring& arguments);
    // Waits until there is the window or the semaphore that hosts look for, and then for the other;
    // also ends when the program does.
    void waitForInstance();
    bool isProgramRunning() const { return job_ && !job_->isEmpty(); }
    // Whether hosts have ever found an instance of it.
    bool wasFound() const { return wasFound_; }
    // Null when it has not been found or has ended.
    const Instance* instance() const;
    // Finds out whether the instance has ended by itself; then starts the program again, a few
    // times at most. `lastRule`: the id of the rule that was checked last.
    void restartIfEnded(const std::string& lastRule);
    // How it has ended by itself; empty: it has not.
    const std::string& unexpectedEnd() const { return unexpectedEnd_; }
    // Ends the process of the instance's window without a warning. False when it is not one that
    // was started here.
    bool killInstance();
    // Closes its window, as a user does. False when its process has not ended in time.
    bool closeInstance();
    // Ends everything that was started.
    void endPrograms();

    // ---- Commits

    // A new part, to be handed in with this id.
    HandedCommit& newCommit(std::uint32_t id);
    // The same with a file of this name, which is not made.
    HandedCommit& newCommitOf(const std::wstring& file, std::uint32_t id);
    const std::vector<std::unique_ptr<HandedCommit>>& commits() const { return commits_; }
    // The commit file of the running instance; made empty when it is first used.
    HostsCommitFile& commitFile();
    // Stops using it, as hosts that have closed it.
    void closeCommitFile() { commitFile_.reset(); }
    // Appends its record and, if wanted, sends the notice. False when it cannot be written.
    bool handIn(HandedCommit& commit, bool isAnnounced = true);
    void announce(const HandedCommit& commit);
    // Waits until the log shows it; false when it does not within the bound from when the commit
    // was handed in, so that several are waited for together.
    bool waitUntilTaken(HandedCommit& commit);
    // The same for a rule that it is taken.
    Sight seeTaken(HandedCommit& commit);

    // ---- Proof that something does not happen

    // Waits twice as long as the program has needed at most so far for what it did.
    void giveItTime();
    void noteReaction(std::int64_t milliseconds);

    // Removed in the end.
    void removeLater(const std::wstring& file) { made_.push_back(file); }

private:
    void findInstance();

    const CompanionToVerify companion_;
    const std::wstring folder_;
    const Waiting waiting_;
    const RegisteredFolder registered_;
    const peer::SocketsLibrary sockets_{};
    CompanionEventLog log_;
    HostRole host_;
    std::unique_ptr<ProgramJob> job_{};
    std::vector<std::unique_ptr<ProgramJob>> endedJobs_{}; // whose handles are still valid
    std::optional<Instance> instance_{};
    std::string unexpectedEnd_{};
    int restarts_ = 0;
    bool wasFound_ = false;
    bool hasNoSemaphore_ = false; // it was waited for in vain
    std::unique_ptr<HostsCommitFile> commitFile_{};
    std::vector<std::unique_ptr<HandedCommit>> commits_{};
    std::int64_t reactionMs_ = 0;
    std::vector<std::wstring> made_{};
    Gathered gathered_{};
};

// What a rule needs that its check can see anything.
enum class Needs { nothing, instance, log };

struct CheckedRule {
    Rule rule{};
    Needs needs = Needs::nothing;
    Sight (*check)(CompanionStage& stage) = nullptr;
};

// Without its log it cannot be seen what a Companion has taken.
inline Sight noLog()
{
    return notSeen("there is no event in sys\\companion.log, which would show it");
}

// The rules of each group, in the order in which they are checked.
using CheckedRules = std::vector<CheckedRule>;

} // namespace zemlink
