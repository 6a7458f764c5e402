#include "tools/zemlink/commands.h"

#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/handle.h"
#include "peer/notice_port.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/facts/gather_facts.h"
#include "tools/zemlink/facts/port_facts.h"
#include "tools/zemlink/facts/system.h"
#include "tools/zemlink/output.h"
#include "tools/zemlink/record.h"
#include "tools/zemlink/replay_command.h"
#include "tools/zemlink/reports/answers.h"
#include "tools/zemlink/reports/decode.h"
#include "tools/zemlink/reports/file_reports.h"
#include "tools/zemlink/reports/problems.h"
#include "tools/zemlink/reports/status.h"
#include "tools/zemlink/send.h"
#include "tools/zemlink/support_archive.h"
#include "tools/zemlink/verify_command.h"
#include "tools/zemlink/watch.h"

#include <functional>

namespace zemlink {
namespace {

using peer::fromUtf8;
using Clock = std::chrono::steady_clock;

// Opens the port and passes each notice to `show` as it arrives, after `showReady`, until `count`
// notices have arrived or `timeoutMs` have passed; without either, forever. Empty connections,
// with which programs test the port, are skipped. Exit code `problem` when fewer than `count`
// arrived.
Outcome listenForNotices(std::optional<std::int64_t> count, std::optional<std::int64_t> timeoutMs,
                         const std::function<void()>& showReady,
                         const std::function<void(const Report&)>& show)
{
    peer::NoticeListener listener;
    if (const int error = peer::openNoticePort(listener)) {
        return failure("port-in-use",
                       portTakenText(systemErrorText(static_cast<std::uint32_t>(error)),
                                     portHolder(), findCompanion().isRunning),
                       "", portInUse);
    }
    showReady();
    const Clock::time_point start = Clock::now();
    std::int64_t shown = 0;
    while (!(count && shown >= *count)) {
        if (timeoutMs && Clock::now() - start >= std::chrono::milliseconds(*timeoutMs))
            return {Report(), count ? problem : done};
        for (const std::string& bytes : peer::receiveNotices(listener)) {
            if (!bytes.empty() && !(count && shown >= *count)) {
                show(noticeReport(bytes));
                ++shown;
            }
        }
    }
    return {};
}

Outcome listen(const Arguments& arguments)
{
    // One line for each notice, so that a reader can process them one at a time.
    const auto show = [&](const Report& notice) {
        print(Stream::output,
              arguments.isJson ? jsonText(notice, JsonLayout::oneLine) : asText(notice) + '\n');
    };
    const auto showReady = [&] {
        arguments.isJson ? show(Report{{"listening", peer::noticePort}})
                         : print(Stream::output, "listening on port 4559\n\n");
    };
    return listenForNotices(arguments.count, arguments.timeoutMs, showReady, show);
}

// Why the file cannot be read.
std::string readingError(const std::wstring& path)
{
    const peer::OwnHandle file = peer::ownFile(CreateFileW(
        path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    const DWORD error = GetLastError();
    return file ? "a host is writing to it, or it is not a disk file" : systemErrorText(error);
}

Outcome decodeFile(const Arguments& arguments)
{
    const std::wstring path = fromUtf8(arguments.path);
    const auto bytes = peer::readFile(path);
    if (!bytes)
        return failure("file-not-readable", arguments.path + ": " + readingError(path));
    const auto kind = arguments.kind ? arguments.kind : kindOf(peer::fileNameOf(path), *bytes);
    if (!kind) {
        return failure("kind-unknown",
                       arguments.path + ": neither its name nor its content is that of a file that "
                                        "zemlink knows; if it is one, give its kind with --as");
    }
    return decode(*kind, *bytes);
}

Outcome outcomeOf(const Arguments& arguments)
{
    switch (arguments.command) {
    case Command::status:
        return {statusReport(gatherFacts(Tests::skipped))};
    case Command::open:
        return sendOpen(arguments);
    case Command::newFile:
        return sendNew(arguments);
    case Command::checkIn:
        return sendCheckIn(arguments);
    case Command::listen:
        return listen(arguments);
    case Command::decode:
        return decodeFile(arguments);
    case Command::doctor:
        return doctorOutcome(gatherFacts(Tests::made), arguments.isEverythingShown);
    case Command::watch:
        return watch(arguments);
    case Command::record:
        return record(arguments);
    case Command::replay:
        return replayRecording(arguments);
    case Command::report:
        return writeSupportArchive(arguments);
    case Command::verify:
        return verify(arguments);
    case Command::none:
        break;
    }
    return {};
}

// The first line names the mistake, the rest refers to --help.
Report usageFailure(const std::string& text)
{
    return failure("wrong-usage", text.substr(0, text.find('\n')),
                   "Run it with --help for the commands and options.", wrongUsage)
        .report;
}

} // namespace

int carryOut(const Arguments& arguments)
{
    if (arguments.command == Command::none) {
        const bool isRequested = arguments.exitCode == done;
        if (isRequested)
            print(Stream::output, arguments.text);
        else if (arguments.isJson)
            printReport(usageFailure(arguments.text), true);
        else
            printUsageError(arguments.text);
        return arguments.exitCode;
    }
    const Outcome outcome = outcomeOf(arguments);
    if (!outcome.report.is_null())
        printReport(outcome.report, arguments.isJson);
    return outcome.exitCode;
}

} // namespace zemlink
