// The second host: commits, the other notices, and the settings.
#pragma once

#include "tools/zemlink/session/companion_role.h"
#include "tools/zemlink/verify/addin_host.h"
#include "tools/zemlink/verify/addin_lock.h"
#include "tools/zemlink/verify/addin_site.h"
#include "tools/zemlink/verify/addin_trace.h"
#include "tools/zemlink/verify/waiting.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zemlink {

// How far the host came. Each step but the last two opens a part under its own request id.
enum class CommitStep {
    addInOpen,
    first,
    unicode, // while a reader has locked the records before
    sheets,
    queue,
    queueWithoutSettings,
    redirected,
    lastSetting,
    hostSave,
    failedSave,
    heldFile, // nobody else can open the commit file
    unreadable,
    afterCheckIn,
    saves // again and again, while the lock is watched
};

constexpr std::int32_t idOf(CommitStep step)
{
    return 40 + static_cast<std::int32_t>(step);
}

// The documents, by their paths, UTF-8.
struct CommitParts {
    std::string first{}, second{}, unicode{}, sheets{}, queue{}, queueWithoutSettings{},
        redirected{}, inside{}, lastSetting{}, hostSave{}, failedSave{}, heldFile{}, unreadable{},
        afterCheckIn{};
};

// The commit file before and after a step.
struct CommitGrowth {
    std::string before{}, after{};

    bool areEarlierBytesKept() const { return after.starts_with(before); }
    // What was added; what is there if the earlier bytes have changed.
    std::string added() const
    {
        return areEarlierBytesKept() ? after.substr(before.size()) : after;
    }
};

struct ReceivedNotice {
    std::string bytes{}; // all of one connection
    bool isLate = false; // the add-in had not closed the connection in time
};

// What was seen. Texts are UTF-8.
struct CommitsSeen {
    std::string folder{}; // the installation folder
    CommitParts parts{};
    bool isAddInOpen = false;
    CommitStep reached = CommitStep::addInOpen;
    std::string cut{}; // why it went no further; empty: it went all the way
    HostTrace trace{};

    std::map<CommitStep, CommitGrowth> growth{};
    std::vector<ReceivedNotice> notices{};

    // After the first commit.
    std::string pictureStart{}; // the first bytes of the screen picture; empty: there is none
    std::uint64_t pictureTime = 0, recordTime = 0; // when they were written, as file times

    // When the notice had arrived, or should have; empty: there is no such file.
    std::optional<std::string> queue{}, queueWithoutSettings{};
    bool hasEmptyQueue = false; // of the part without operations
    bool hasCatiaReader = false;
    bool isFileHeld = false; // nobody else could open the commit file then

    LocksSeen locks{};
    size_t watchedCommits = 0;
    std::optional<std::uint64_t> tooLongLeft{}; // bytes in the command file after one too many
    std::optional<bool> isCommandFileGone{};    // after the process was ended
};

inline constexpr char earlierCommit[] = "C:\\Parts\\earlier.mcam"; // its record is there before

// Throws std::runtime_error and Interrupted.
CommitsSeen runCommits(const AddInToVerify& addIn, const AddInSite& site, CompanionRole& role,
                       const Waiting& waiting);

} // namespace zemlink
