#include "tools/zemlink/send.h"

#include "peer/command_file.h"
#include "peer/delivery.h"
#include "peer/exchange_paths.h"
#include "peer/installation_folder.h"
#include "peer/running_programs.h"
#include "peer/text.h"
#include "tools/zemlink/facts/system.h"
#include "tools/zemlink/reports/answers.h"
#include "tools/zemlink/until_opened.h"

#include <algorithm>
#include <chrono>

namespace zemlink {
namespace {

using Clock = std::chrono::steady_clock;
using peer::CommandFileState;
using peer::fromUtf8;
using peer::toUtf8;
using peer::Verdict;

struct Delivered {
    Verdict verdict;
    std::string cause{}; // why an empty file could not be written, if that happened
};

constexpr DWORD pollMs = 5;

std::int64_t elapsedMs(Clock::time_point from)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - from).count();
}

// Polls the file until the verdict is not to wait.
template <class Judge>
Verdict waitFor(const std::wstring& path, Clock::time_point since, Judge judge)
{
    Clock::time_point lastSeen = since;
    for (;; Sleep(pollMs)) {
        const CommandFileState state = peer::readCommandFileState(path);
        lastSeen = state.exists ? Clock::now() : lastSeen;
        const Verdict verdict = judge(state, elapsedMs(since), elapsedMs(lastSeen));
        if (verdict != Verdict::wait)
            return verdict;
    }
}

// Waits until the command file is empty, writes the request and waits until it is taken; up to
// `boundMs` each time.
Delivered deliver(const std::wstring& commandFile, const std::string& request, std::int64_t boundMs)
{
    peer::DeliveryBounds bounds{boundMs, boundMs};
    bounds.missingMs = std::min(bounds.missingMs, boundMs);
    const Clock::time_point start = Clock::now();
    std::string cause;
    for (bool isWritten = false; !isWritten; Sleep(isWritten ? 0 : pollMs)) {
        const Verdict verdict = waitFor(
            commandFile, start, [&](const CommandFileState& state, auto waitedMs, auto missingMs) {
                return peer::judgeBeforeWriting(state, waitedMs, missingMs, bounds);
            });
        if (verdict != Verdict::write) {
            const bool isEmpty = peer::readCommandFileState(commandFile).size == 0;
            return {verdict, isEmpty ? cause : ""};
        }
        SetLastError(ERROR_SUCCESS);
        isWritten = peer::writeRequest(commandFile, request);
        const DWORD error = GetLastError();
        cause = error == ERROR_SUCCESS ? "" : systemErrorText(error);
    }
    const Verdict verdict =
        waitFor(commandFile, Clock::now(),
                [&](const CommandFileState& state, auto waitedMs, auto missingMs) {
                    return peer::judgeAfterWriting(state, waitedMs, missingMs, bounds);
                });
    return {verdict};
}

constexpr std::int64_t usualTimeoutMs = 10000;

Outcome send(const Arguments& arguments, const Report& request, const std::string& bytes)
{
    const HostChoice choice = chooseHost(peer::findHosts(), arguments.host);
    if (!choice.process)
        return failure(choice.name, choice.reason, "", noHost);
    const std::wstring folder = peer::readInstallationFolder().path;
    const std::wstring file = peer::commandFilePath(folder, *choice.process);
    const std::int64_t boundMs = arguments.timeoutMs.value_or(usualTimeoutMs);
    const std::uint64_t logStart = loadLogSize(folder);
    const Delivered delivered = deliver(file, bytes, boundMs);
    Outcome taken = answerOutcome(request, *choice.process, delivered.verdict, delivered.cause);
    if (!arguments.isUntilOpened || taken.exitCode != done)
        return taken;
    const std::wstring part = fromUtf8(request["path"].get<std::string>());
    return openedOutcome(taken.report,
                         waitForLoad(folder, part, logStart, *choice.process, boundMs));
}

} // namespace

Outcome sendOpen(const Arguments& arguments)
{
    const std::wstring path = fullPath(fromUtf8(arguments.path));
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        return failure("file-not-found", toUtf8(path) + ": " + systemErrorText(error));
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return failure("not-a-file", toUtf8(path) + ": this is a directory");
    const auto bytes = peer::formatOpenRequest(arguments.id, path);
    if (!bytes) {
        return failure("path-not-ascii",
                       toUtf8(path) +
                           ": hosts accept only plain ASCII paths of less than 65536 bytes");
    }
    const Report request{{"request", "open"}, {"id", arguments.id}, {"path", toUtf8(path)}};
    return send(arguments, request, *bytes);
}

Outcome sendNew(const Arguments& arguments)
{
    const Report request{{"request", "new file"}, {"id", arguments.id}};
    return send(arguments, request, peer::formatNewFileRequest(arguments.id));
}

Outcome sendCheckIn(const Arguments& arguments)
{
    const Report request{{"request", "check-in"}, {"name", arguments.path}};
    return send(arguments, request, peer::formatCheckIn(fromUtf8(arguments.path)));
}

} // namespace zemlink
