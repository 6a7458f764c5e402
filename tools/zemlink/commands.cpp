#include "tools/zemlink/commands.h"

#include "peer/exchange_paths.h"
#include "peer/command_file.h"
#include "peer/files.h"
#include "peer/handle.h"
#include "peer/hosts.h"
#include "peer/text.h"
#include "tools/zemlink/answers.h"
#include "tools/zemlink/decode.h"
#include "tools/zemlink/host_choice.h"
#include "tools/zemlink/report_text.h"
#include "tools/zemlink/status.h"
#include "tools/zemlink/problems.h"
#include "tools/zemlink/deliver.h"
#include "tools/zemlink/gather_facts.h"
#include "tools/zemlink/listen.h"
#include "tools/zemlink/output.h"
#include "tools/zemlink/registry.h"
#include "tools/zemlink/system_error.h"

namespace zemlink {
namespace {

using companion::fromUtf8;
using companion::toUtf8;

constexpr std::int64_t usualTimeoutMs = 10000;

Outcome send(const Arguments& arguments, const Report& request, const std::string& bytes)
{
    const HostChoice choice = chooseHost(companion::findHosts(), arguments.host);
    if (!choice.process)
        return failure(choice.reason);
    const std::wstring file = companion::commandFilePath(registeredFolder().path, *choice.process);
    const Delivered delivered = deliver(file, bytes, arguments.timeoutMs.value_or(usualTimeoutMs));
    return answerOutcome(request, *choice.process, delivered.verdict, delivered.cause);
}

// The host has another current folder than this program.
std::wstring fullPath(const std::wstring& path)
{
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

Outcome sendOpen(const Arguments& arguments)
{
    const std::wstring path = fullPath(fromUtf8(arguments.path));
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        return failure(toUtf8(path) + ": " + systemErrorText(error));
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return failure(toUtf8(path) + ": it is a folder");
    const auto bytes = companion::openRequest(arguments.id, path);
    if (!bytes) {
        return failure(toUtf8(path) +
                       ": hosts take only paths of plain ASCII of less than 65536 bytes");
    }
    const Report request{{"request", "open"}, {"id", arguments.id}, {"path", toUtf8(path)}};
    return send(arguments, request, *bytes);
}

Outcome sendNew(const Arguments& arguments)
{
    const Report request{{"request", "new file"}, {"id", arguments.id}};
    return send(arguments, request, companion::newFileRequest(arguments.id));
}

Outcome sendCheckIn(const Arguments& arguments)
{
    const Report request{{"request", "check-in"}, {"name", arguments.path}};
    return send(arguments, request, companion::checkInRequest(fromUtf8(arguments.path)));
}

Outcome listen(const Arguments& arguments)
{
    // A line for each notice, so that a reader can take them one at a time.
    const auto show = [&](const Report& notice) {
        print(Stream::output, arguments.isJson ? notice.dump() + '\n' : asText(notice) + '\n');
    };
    const auto showReady = [&] {
        arguments.isJson ? show(Report{{"listening", 4559}})
                         : print(Stream::output, "listening on port 4559\n\n");
    };
    return listenForNotices(arguments.count, arguments.timeoutMs, showReady, show);
}

// Why the file cannot be read.
std::string readingError(const std::wstring& path)
{
    const companion::OwnHandle file = companion::ownFile(CreateFileW(
        path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    const DWORD error = GetLastError();
    return file ? "a host writes to it just now, or it is no file of a disk"
                : systemErrorText(error);
}

Outcome decodeFile(const Arguments& arguments)
{
    const std::wstring path = fromUtf8(arguments.path);
    const auto bytes = companion::readFile(path);
    if (!bytes)
        return failure(arguments.path + ": " + readingError(path));
    const auto kind = arguments.kind ? arguments.kind : kindOf(companion::fileNameOf(path), *bytes);
    if (!kind) {
        return failure(arguments.path +
                       ": neither its name nor what it holds tells its kind; name it with --as");
    }
    return decode(*kind, *bytes);
}

Outcome outcomeOf(const Arguments& arguments)
{
    switch (arguments.command) {
    case Command::status:
        return {statusReport(gatherFacts(Temp::isLeftAlone))};
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
        return troublesOutcome(findTroubles(gatherFacts(Temp::isTried)));
    case Command::none:
        break;
    }
    return {};
}

} // namespace

int carryOut(const Arguments& arguments)
{
    if (arguments.command == Command::none) {
        const bool isAsked = arguments.exitCode == done;
        if (isAsked)
            print(Stream::output, arguments.text);
        else
            printComplaint(arguments.text);
        return arguments.exitCode;
    }
    const Outcome outcome = outcomeOf(arguments);
    if (!outcome.report.is_null())
        printReport(outcome.report, arguments.isJson);
    return outcome.exitCode;
}

} // namespace zemlink
