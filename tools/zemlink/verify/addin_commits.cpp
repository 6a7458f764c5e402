#include "tools/zemlink/verify/addin_commits.h"

#include "peer/command_file.h"
#include "peer/commit_record.h"
#include "peer/delivery.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/handle.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/verify/addin_commit_script.h"

namespace zemlink {
namespace {

constexpr std::int32_t ncPath = 3; // in the machine settings
// A connection that the add-in leaves open is ended by the port after five seconds.
constexpr std::int64_t noticeBoundMs = 6500;
constexpr std::int64_t noticeBoundOnceMissedMs = 300;
constexpr std::int64_t lateMs = 4000;

// Two operations of one program, whose group has a parent; two more programs, of which the last has
// not been posted.
constexpr char partWithOperations[] = "mastercam part 1\n"
                                      "\n[group]\nid = 1\nname = Mill 3-axis\n"
                                      "\n[group]\nid = 2\nparent = 1\nname = First side\n"
                                      "\n[operation]\nid = 1\ngroup = 2\n"
                                      "nci-name = C:\\NC\\PLATE-2.nci\n"
                                      "\n[operation]\nid = 2\ngroup = 2\n"
                                      "nci-name = C:\\NC\\PLATE-1.nci\n"
                                      "\n[operation]\nid = 3\ngroup = 2\n"
                                      "nci-name = C:\\NC\\PLATE-2.nci\n"
                                      "\n[operation]\nid = 4\ngroup = 1\n"
                                      "nci-name = C:\\NC\\NOT-POSTED.nci\n";

std::wstring queuePath(const AddInSite& site, CommitStep step)
{
    return site.folder() + peer::tempFolder + L'\\' + peer::ncQueueStart +
           std::to_wstring(idOf(step)) + peer::textEnd;
}

std::uint64_t writeTimeOf(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
    return std::uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32 |
           data.ftLastWriteTime.dwLowDateTime;
}

constexpr DWORD shareEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

peer::OwnHandle openExisting(const std::wstring& path, DWORD sharing)
{
    return peer::ownFile(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, sharing, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// All bytes of the file so far are locked, as a Companion does that reads them.
class ReaderLock {
public:
    explicit ReaderLock(const std::wstring& path) : file_(openExisting(path, shareEverything))
    {
        LARGE_INTEGER size{};
        if (file_ && GetFileSizeEx(file_.get(), &size))
            LockFile(file_.get(), 0, 0, size.LowPart, 0);
    }

private:
    peer::OwnHandle file_;
};

class CommitRun {
public:
    CommitRun(const AddInToVerify& addIn, const AddInSite& site, CompanionRole& role,
              const Waiting& waiting)
        : site_(site),
          role_(role),
          waiting_(waiting),
          parts_(commitParts(site)),
          file_(peer::commitPaths(site.folder(), GetCurrentProcessId()).live),
          host_(addIn, site, L"commits", commitScript(site, parts_), waiting)
    {
        seen_.parts = parts_;
        seen_.folder = peer::toUtf8(site.folder());
        seen_.hasCatiaReader = peer::isFile(
            addIn.host.substr(0, addIn.host.find_last_of(L'\\') + 1) + L"chooks\\catread5x.dll");
        putFile(file_, peer::formatCommitRecord({7, peer::fromUtf8(earlierCommit)}));
        for (const wchar_t* program : {L"PLATE-1.NC", L"PLATE-2.NC"})
            putFile(site.folder() + L"\\nc\\" + program, "%\n");
    }

    CommitsSeen run()
    {
        bool isGoingOn = note(CommitStep::addInOpen, host_.waitFor("m_open("));
        seen_.isAddInOpen = isGoingOn;
        for (const auto step :
             {&CommitRun::commitFirst, &CommitRun::commitUnicode, &CommitRun::sendSheets,
              &CommitRun::queue, &CommitRun::queueWithoutSettings, &CommitRun::commitRedirected,
              &CommitRun::commitWithLastSetting, &CommitRun::saveByHost, &CommitRun::failToSave,
              &CommitRun::failToRecord, &CommitRun::failToLoad, &CommitRun::commitAfterCheckIn,
              &CommitRun::watchLocks})
            isGoingOn = isGoingOn && (this->*step)();
        host_.end();
        seen_.trace = host_.trace();
        return seen_;
    }

private:
    bool note(CommitStep step, bool isReached)
    {
        if (isReached)
            seen_.reached = step;
        else
            seen_.cut = "the script did not come to this: " + host_.whyNot();
        return isReached;
    }

    std::string commits() const { return peer::readFile(file_).value_or(""); }
    bool isAtEndOf(CommitStep step) const
    {
        return host_.waitFor("title = \"" + titleOf(step) + '"');
    }
    bool openAndWait(CommitStep step, const std::string& path, const std::string& part = "")
    {
        return host_.open(idOf(step), path, part) && isAtEndOf(step);
    }

    // When the commands of a step have been carried out, all of their notices have been sent.
    void takeNotices(size_t count)
    {
        const size_t all = seen_.notices.size() + count;
        const std::int64_t start = monotonicMs();
        const auto haveAll = [&] {
            if (seen_.notices.size() < all)
                for (const ExchangeEvent& notice : role_.receive())
                    seen_.notices.push_back({notice.bytes, monotonicMs() - start >= lateMs});
            return seen_.notices.size() >= all;
        };
        if (!waiting_.until(haveAll, isNoticeMissed_ ? noticeBoundOnceMissedMs : noticeBoundMs))
            isNoticeMissed_ = true;
    }

    // A step that sends so many notices, and what it does to the commit file. `act` returns whether
    // the host came to the end of the step.
    template <class Act>
    bool carryOut(CommitStep step, size_t noticeCount, const Act& act)
    {
        CommitGrowth growth{commits()};
        const bool isDone = act();
        growth.after = commits();
        seen_.growth[step] = growth;
        takeNotices(isDone ? noticeCount : 0);
        return note(step, isDone);
    }

    bool commitFirst()
    {
        const std::wstring picture = peer::screenPicturePath(site_.folder());
        const bool isDone = carryOut(CommitStep::first, 1,
                                     [&] { return openAndWait(CommitStep::first, parts_.first); });
        seen_.pictureStart = peer::readFile(picture).value_or("").substr(0, 2);
        seen_.pictureTime = writeTimeOf(picture);
        seen_.recordTime = writeTimeOf(file_);
        return isDone;
    }

    bool commitUnicode()
    {
        return carryOut(
            CommitStep::unicode, 1,
            [&] {
                const ReaderLock reader(file_);
                return openAndWait(CommitStep::unicode, parts_.second);
            });
    }

    bool sendSheets()
    {
        const bool isDone = carryOut(
            CommitStep::sheets, 2, [&] { return openAndWait(CommitStep::sheets, parts_.sheets); });
        seen_.hasEmptyQueue = peer::isFile(queuePath(site_, CommitStep::sheets));
        return isDone;
    }

    bool queue()
    {
        site_.writeMachineSettings(idOf(CommitStep::queue), ncPath, "C:\\Machines\\Mill.mcam-mmd");
        const bool isDone = carryOut(CommitStep::queue, 1, [&] {
            return openAndWait(CommitStep::queue, parts_.queue, partWithOperations);
        });
        seen_.queue = peer::readFile(queuePath(site_, CommitStep::queue));
        return isDone;
    }
    bool queueWithoutSettings()
    {
        constexpr CommitStep step = CommitStep::queueWithoutSettings;
        const bool isDone = carryOut(step, 1, [&] {
            return openAndWait(step, parts_.queueWithoutSettings, partWithOperations);
        });
        seen_.queueWithoutSettings = peer::readFile(queuePath(site_, step));
        return isDone;
    }

    bool commitRedirected()
    {
        site_.writeSettings("UseFtpServer=y\r\nAlwaysSaveTools=y\r\nMCXCATIA=y\r\n");
        return carryOut(CommitStep::redirected, 4,
                        [&] { return openAndWait(CommitStep::redirected, parts_.redirected); });
    }
    bool commitWithLastSetting()
    {
        site_.writeSettings("UseFtpServer=y\r\nXUseFtpServer=n\r\nAlwaysSaveTools=Y\r\n");
        return carryOut(CommitStep::lastSetting, 1,
                        [&] { return openAndWait(CommitStep::lastSetting, parts_.lastSetting); });
    }

    bool saveByHost()
    {
        site_.writeSettings("");
        return carryOut(CommitStep::hostSave, 1,
                        [&] { return openAndWait(CommitStep::hostSave, parts_.hostSave); });
    }

    bool failToSave()
    {
        return carryOut(
            CommitStep::failedSave, 0,
            [&] { return openAndWait(CommitStep::failedSave, parts_.failedSave); });
    }
    bool failToRecord()
    {
        constexpr DWORD noSharing = 0;
        return carryOut(CommitStep::heldFile, 0, [&] {
            peer::OwnHandle held;
            seen_.isFileHeld = waiting_.until([&] {
                held = openExisting(file_, noSharing);
                return held != nullptr;
            });
            return openAndWait(CommitStep::heldFile, parts_.heldFile);
        });
    }
    bool failToLoad()
    {
        return carryOut(
            CommitStep::unreadable, 0,
            [&] { return openAndWait(CommitStep::unreadable, parts_.unreadable); });
    }

    bool commitAfterCheckIn()
    {
        site_.writeSettings("AlwaysSaveTools=y\r\n");
        // The saves that are watched follow at once, with records of the same length.
        lock_.emplace(file_, static_cast<std::uint32_t>(recordBytes()));
        watchedFrom_ = commits().size();
        return carryOut(CommitStep::afterCheckIn, 1, [&] {
            return host_.send(peer::formatCheckIn(L"unreadable.mcam")) &&
                   isAtEndOf(CommitStep::afterCheckIn);
        });
    }

    // Meanwhile a request that is too long is in the command file. In the end the host is ended
    // like one that crashes.
    bool watchLocks()
    {
        constexpr std::int64_t tooLongMs = 400; // several times as long as between two polls
        const std::int64_t start = monotonicMs();
        const bool isWritten = writeTooLong();
        // Otherwise none of the many records to come will be seen. A record over another one may
        // make the file a little longer, too, and one that is appended may be cut.
        const bool isAppending = commits().size() > watchedFrom_ + recordBytes() / 2;
        if (isAppending)
            waitForLocks();
        seen_.locks = lock_->end();
        seen_.watchedCommits = (commits().size() - watchedFrom_) / recordBytes();
        waiting_.pause(tooLongMs - (monotonicMs() - start));
        const peer::CommandFileState left = peer::readCommandFileState(host_.commandFile());
        if (isWritten)
            seen_.tooLongLeft = left.exists ? left.size : 0;
        const bool isReached = seen_.watchedCommits > 0;
        if (isReached)
            seen_.reached = CommitStep::saves;
        else
            seen_.cut = "nothing was appended to the commit file while its locks were watched";
        host_.end();
        seen_.isCommandFileGone = !peer::isFile(host_.commandFile());
        return isReached;
    }
    // As long as records come; there are many.
    void waitForLocks()
    {
        std::uint64_t size = 0;
        const auto isOver = [&] { return lock_->isDone() || host_.hasEnded(); };
        const auto hasNews = [&] {
            role_.receive(); // the notices of these commits
            return isOver() || peer::fileSize(file_) != size;
        };
        while (!isOver() && waiting_.until(hasNews))
            size = peer::fileSize(file_);
    }
    // By setting the size: a write of so many bytes can be seen before it is complete, when they
    // are not yet too many.
    bool writeTooLong() const
    {
        const peer::OwnHandle file = openExisting(host_.commandFile(), shareEverything);
        FILE_END_OF_FILE_INFO end{};
        end.EndOfFile.QuadPart = peer::longestRequestBytes + 1;
        return file && SetFileInformationByHandle(file.get(), FileEndOfFileInfo, &end, sizeof end);
    }
    size_t recordBytes() const
    {
        return peer::formatCommitRecord({0, peer::fromUtf8(parts_.afterCheckIn)}).size();
    }

    const AddInSite& site_;
    CompanionRole& role_;
    const Waiting& waiting_;
    const CommitParts parts_;
    const std::wstring file_; // the commit file
    AddInHost host_;
    std::optional<LockWatch> lock_{};
    size_t watchedFrom_ = 0; // bytes of the commit file
    bool isNoticeMissed_ = false;
    CommitsSeen seen_{};
};

} // namespace

CommitsSeen runCommits(const AddInToVerify& addIn, const AddInSite& site, CompanionRole& role,
                       const Waiting& waiting)
{
    return CommitRun(addIn, site, role, waiting).run();
}

} // namespace zemlink
