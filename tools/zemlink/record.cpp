#include "tools/zemlink/record.h"

#include "peer/installation_folder.h"
#include "peer/text.h"
#include "tools/zemlink/facts/gather_facts.h"
#include "tools/zemlink/facts/system.h"
#include "tools/zemlink/interruption.h"
#include "tools/zemlink/output.h"

#include "tools/zemlink/reports/status.h"
#include "tools/zemlink/session/local_time.h"
#include "tools/zemlink/session/observer.h"
#include "tools/zemlink/session/recording.h"
#include "tools/zemlink/session/recording_space.h"
#include "tools/zemlink/session/redaction.h"
#include "tools/zemlink/session/running_recording.h"

#include <algorithm>
#include <stdexcept>

namespace zemlink {
namespace {

constexpr std::int64_t writeEveryMs = 10000;
constexpr std::int64_t writingTimes = 20;     // of the time that writing takes, the pause after it
constexpr std::int64_t finishWithinMs = 4000; // Windows gives five seconds when a console is closed
constexpr DWORD finishEveryMs = 200;
constexpr std::int64_t longestIdleMs = 60000; // its length is limited, too

std::int64_t ticks()
{
    return static_cast<std::int64_t>(GetTickCount64());
}

class Recorder {
public:
    Recorder(std::wstring path, bool isRedacted, const Observer& observer,
             const std::wstring& folder)
        : path_(std::move(path)), isRedacted_(isRedacted), space_(observer.startedAt())
    {
        recording_.startedAt = observer.startedAt();
        recording_.isFinished = false;
        recording_.folder = folder;
        recording_.status = statusReport(gatherFacts(Tests::skipped));
        add(observer.presentAtStart());
        write();
    }

    void add(std::vector<ExchangeEvent> events)
    {
        for (ExchangeEvent& event : events) {
            limit_ = space_.findLimit(event);
            if (!limit_.empty())
                return;
            recording_.events.push_back(std::move(event));
            hasNews_ = true;
        }
    }
    // Whether a limit has been reached.
    bool isFull()
    {
        if (limit_.empty())
            limit_ = space_.findLimit(currentTime());
        return !limit_.empty();
    }
    void writeNews()
    {
        if (hasNews_ && ticks() >= nextWriteAt_)
            tryToWrite();
    }
    // Tries for some seconds. Throws std::runtime_error, with the cause, when the file cannot be
    // written.
    void finish()
    {
        recording_.isFinished = true;
        for (const std::int64_t end = ticks() + finishWithinMs; ticks() < end; Sleep(finishEveryMs))
            if (tryToWrite())
                return;
        write();
    }
    // The time until isFull or writeNews has something to do.
    std::int64_t idleMs() const
    {
        return hasNews_ ? std::max<std::int64_t>(0, nextWriteAt_ - ticks()) : longestIdleMs;
    }

    // Which one, a sentence; empty when none has been reached.
    const std::string& limit() const { return limit_; }
    size_t count() const { return recording_.events.size(); }

private:
    void write()
    {
        const std::int64_t start = ticks();
        nextWriteAt_ = start + writeEveryMs;
        writeRecording(path_, isRedacted_ ? redacted(recording_) : recording_);
        hasNews_ = false;
        // A long recording is written less often, so that writing stays a small part of the time.
        nextWriteAt_ += writingTimes * (ticks() - start);
    }
    // False when it failed: another program may be reading the file.
    bool tryToWrite()
    {
        try {
            write();
            return true;
        } catch (const std::runtime_error&) {
            return false;
        }
    }

    std::wstring path_;
    bool isRedacted_; // the file, not what is kept here: names that come later have to fit
    Recording recording_{};
    RecordingSpace space_;
    std::string limit_{};
    std::int64_t nextWriteAt_ = 0;
    bool hasNews_ = false;
};

// Until the user ends it, the time is over or a limit is reached.
void recordEvents(Observer& observer, Recorder& recorder, const Interruption& interruption,
                  std::optional<std::int64_t> timeoutMs)
{
    const std::int64_t start = ticks();
    while (!interruption.isRequested() && !recorder.isFull()) {
        std::int64_t left = recorder.idleMs();
        if (timeoutMs)
            left = std::min(left, *timeoutMs - (ticks() - start));
        if (timeoutMs && ticks() - start >= *timeoutMs)
            return;
        recorder.add(observer.wait(left, interruption.handle()));
        recorder.writeNews();
    }
    if (!recorder.isFull())
        recorder.add(observer.wait(0));
}

} // namespace

Outcome record(const Arguments& arguments)
{
    const std::wstring path = fullPath(peer::fromUtf8(arguments.path));
    if (const auto existing = findExisting(path))
        return *existing;
    const Interruption interruption;
    const RunningRecording running(path);
    const std::wstring folder = peer::readInstallationFolder().path;
    Observer observer(folder);
    Recorder recorder(path, arguments.isRedacted, observer, folder);
    if (!arguments.isJson) {
        print(Stream::output, "recording " + visible(peer::toUtf8(folder)) + " to " +
                                  visible(arguments.path) + "\n");
    }
    recordEvents(observer, recorder, interruption, arguments.timeoutMs);
    recorder.finish();
    Report report{{"file", arguments.path}, {"events", recorder.count()}};
    if (!recorder.limit().empty())
        report["stopped"] = recorder.limit();
    const size_t lost = observer.takeLost();
    if (lost != 0)
        report["lost"] = lost;
    return {report, !recorder.limit().empty() || lost != 0 ? problem : done};
}

} // namespace zemlink
