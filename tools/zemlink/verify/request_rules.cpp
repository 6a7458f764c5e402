// What a Companion writes into the command file of a host, and next to it.
#include "peer/commit_record.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/machine_settings.h"
#include "peer/text.h"
#include "tools/zemlink/reports/report.h"
#include "tools/zemlink/verify/companion_rule_groups.h"

#include <algorithm>

namespace zemlink {
namespace {

using peer::HostCommandKind;

// Printable characters as they are, others as two hexadecimal digits: `<EF><BB><BF>17
// C:\a.mcam<0A>`
std::string bytesText(std::string_view bytes)
{
    constexpr size_t mostShown = 200;
    std::string text;
    for (const char c : bytes.substr(0, mostShown))
        text += c >= ' ' && c <= '~' ? std::string(1, c)
                                     : '<' + hexadecimal(std::string_view(&c, 1)) + '>';
    return bytes.size() > mostShown ? text + "..." : text;
}

std::wstring forHost(std::wstring arguments)
{
    constexpr std::wstring_view mark = L"{host}";
    const std::wstring process = std::to_wstring(GetCurrentProcessId());
    for (size_t at = arguments.find(mark); at != std::wstring::npos; at = arguments.find(mark, at))
        arguments.replace(at, mark.size(), process);
    return arguments;
}

std::optional<std::string> settingsOf(const CompanionStage& stage, const peer::HostCommand& command)
{
    return command.kind == HostCommandKind::open
               ? peer::readFile(peer::machineSettingsPath(stage.folder(), command.id))
               : std::nullopt;
}

// If there were none at the first sight of the request, they may come late, or never.
std::optional<std::string> laterSettingsOf(const CompanionStage& stage, const SeenRequest& seen)
{
    constexpr std::int64_t lateMs = 1000, writtenMs = 50;
    const bool isLate = seen.command.kind == HostCommandKind::open && !seen.settings;
    const auto isThere = [&] { return settingsOf(stage, seen.command).has_value(); };
    if (isLate && stage.waiting().until(isThere, lateMs))
        stage.waiting().pause(writtenMs);
    return settingsOf(stage, seen.command);
}

// The bytes that follow the first ones, if the request was written in several pieces.
std::string completed(CompanionStage& stage, const std::string& first)
{
    const bool looksComplete = first.ends_with('\n') || first.starts_with(peer::checkInWord);
    constexpr std::int64_t usualMs = 100, mostMs = 2000;
    std::string bytes = first;
    stage.waiting().until(
        [&] {
            bytes = stage.host().content();
            return bytes != first && bytes.ends_with('\n');
        },
        looksComplete ? usualMs : mostMs, 1);
    return bytes;
}

// Waits for a request and takes it as hosts do.
std::optional<SeenRequest> takeRequest(CompanionStage& stage, std::int64_t boundMs)
{
    HostRole& host = stage.host();
    SeenRequest seen;
    const auto isWritten = [&] {
        seen.first = host.content();
        return !seen.first.empty();
    };
    if (!stage.waiting().until(isWritten, boundMs, 1))
        return std::nullopt;
    seen.command = peer::parseHostCommand(seen.first);
    seen.settings = settingsOf(stage, seen.command);
    stage.removeLater(peer::machineSettingsPath(stage.folder(), seen.command.id));
    seen.isFileHeld = host.isFileHeld();
    seen.bytes = completed(stage, seen.first);
    seen.command = peer::parseHostCommand(seen.bytes);
    seen.laterSettings = laterSettingsOf(stage, seen);
    seen.isFileAgain = host.isFileHeld() ? host.makeFile() : host.makeClosedFile();
    return seen;
}

// Others may still come from an earlier start.
bool isOfKind(const SeenRequest& seen, HostCommandKind kind)
{
    return seen.command.kind == kind || seen.command.kind == HostCommandKind::malformed;
}

std::optional<SeenRequest> takeRequestOfKind(CompanionStage& stage, HostCommandKind kind)
{
    const std::int64_t end = monotonicMs() + stage.waiting().boundMs();
    for (std::int64_t left; (left = end - monotonicMs()) > 0;) {
        auto seen = takeRequest(stage, left);
        if (!seen || isOfKind(*seen, kind))
            return seen;
    }
    return std::nullopt;
}

// If nothing comes while the host has the file open, it may come when no host has.
const SeenRequest* askFor(CompanionStage& stage, const std::wstring& arguments,
                          HostCommandKind kind)
{
    const std::int64_t start = monotonicMs();
    stage.start(forHost(arguments));
    auto seen = takeRequestOfKind(stage, kind);
    if (seen)
        stage.noteReaction(monotonicMs() - start);
    if (!seen && stage.host().isFileHeld() && stage.host().makeClosedFile()) {
        stage.start(forHost(arguments));
        seen = takeRequestOfKind(stage, kind);
    }
    if (!seen)
        return nullptr;
    seen->arguments = arguments;
    stage.gathered().requests.push_back(std::move(*seen));
    return &stage.gathered().requests.back();
}

const SeenRequest* findSeen(CompanionStage& stage, HostCommandKind kind)
{
    const auto& all = stage.gathered().requests;
    const auto found = std::ranges::find_if(
        all, [&](const SeenRequest& seen) { return seen.command.kind == kind; });
    return found == all.end() ? nullptr : &*found;
}

Sight seeRequest(CompanionStage& stage, const std::wstring& arguments, HostCommandKind kind,
                 const char* option)
{
    if (arguments.empty())
        return notSeen(std::string(option) + " is not given");
    const SeenRequest* seen = askFor(stage, arguments, kind);
    if (seen == nullptr)
        return broken("No request came into the command file " + stage.boundText() + '.');
    const peer::HostCommand& command = seen->command;
    if (command.kind == kind && command.remarks.empty())
        return {};
    return broken("It wrote " + bytesText(seen->bytes) +
                  (command.remarks.empty() ? "." : ". " + command.remarks.front()));
}

Sight noRequest()
{
    return notSeen("no request was seen");
}

// ---- Open request

Sight writesOpenRequest(CompanionStage& stage)
{
    return seeRequest(stage, stage.companion().openArguments, HostCommandKind::open, "--open");
}

Sight namesFile(CompanionStage& stage)
{
    const SeenRequest* seen = findSeen(stage, HostCommandKind::open);
    if (seen == nullptr)
        return notSeen("no open request was seen");
    const std::wstring file = peer::fromAnsi(seen->command.path);
    if (!peer::isFullPath(file))
        return broken(seen->command.path + " is not a full path.");
    return keptIf(peer::isFile(file), "There is no file " + seen->command.path + '.');
}

Sight writesMachineFirst(CompanionStage& stage)
{
    const SeenRequest* seen = findSeen(stage, HostCommandKind::open);
    if (seen == nullptr)
        return notSeen("no open request was seen");
    if (!seen->laterSettings)
        return notSeen("the request has no machine settings");
    return keptIf(seen->settings == seen->laterSettings,
                  "When the request was there, the machine settings were not, or not all of them.");
}

// Which form, and why it is not that of machine settings; empty: it is.
std::string flawOf(const std::string& bytes)
{
    const auto settings = peer::parseMachineSettings(bytes);
    if (!settings)
        return "the file is empty";
    if (!bytes.ends_with('\n'))
        return "its line has no line feed";
    if (settings->hasMoreLines)
        return "it has more than one line";
    if (!settings->ncPath || !settings->secondNumber)
        return "it has less than three bars";
    const std::string numbers = '|' + std::to_string(*settings->ncPath) + '|' +
                                std::to_string(*settings->secondNumber) + '|';
    if (bytes.find(numbers) == std::string::npos)
        return "its second and third field are not numbers";
    return settings->machine.empty() ? "it names no machine definition" : "";
}

Sight writesMachineLine(CompanionStage& stage)
{
    const SeenRequest* seen = findSeen(stage, HostCommandKind::open);
    if (seen == nullptr || !seen->laterSettings)
        return notSeen("no machine settings were seen");
    const std::string flaw = flawOf(*seen->laterSettings);
    return keptIf(flaw.empty(),
                  "It wrote " + bytesText(*seen->laterSettings) + "; but " + flaw + '.');
}

// ---- Other requests

Sight writesNewFile(CompanionStage& stage)
{
    return seeRequest(stage, stage.companion().newFileArguments, HostCommandKind::newFile,
                      "--new-file");
}

Sight writesCheckIn(CompanionStage& stage)
{
    return seeRequest(stage, stage.companion().checkInArguments, HostCommandKind::checkIn,
                      "--check-in");
}

// ---- The command file

Sight sharesFile(CompanionStage& stage)
{
    const auto& all = stage.gathered().requests;
    if (all.empty())
        return noRequest();
    return keptIf(std::ranges::all_of(all, &SeenRequest::isFileHeld),
                  "It wrote a request only after the host had closed its command file.");
}

Sight releasesFile(CompanionStage& stage)
{
    const auto& all = stage.gathered().requests;
    if (all.empty())
        return noRequest();
    return keptIf(std::ranges::all_of(all, &SeenRequest::isFileAgain),
                  "For three seconds after a request, the host could not create its command file "
                  "again: it was still open.");
}

Sight writesAtOnce(CompanionStage& stage)
{
    const auto& all = stage.gathered().requests;
    for (const SeenRequest& seen : all)
        if (seen.first != seen.bytes)
            return broken("First the file had " + bytesText(seen.first) + ", then " +
                          bytesText(seen.bytes) + '.');
    return all.empty() ? noRequest() : Sight{};
}

// Starts the program as it was started for a request that has been seen, and gives it the time to
// write one again.
void askInVain(CompanionStage& stage)
{
    const HANDLE process = stage.start(forHost(stage.gathered().requests.front().arguments));
    stage.waiting().until([&] { return hasEnded(process); });
    stage.giveItTime();
}

Sight leavesFullFile(CompanionStage& stage)
{
    if (stage.gathered().requests.empty())
        return noRequest();
    constexpr std::int64_t latecomerMs = 1000;
    constexpr std::string_view earlier = "CHECKIN an earlier request.mcam";
    HostRole& host = stage.host();
    if (!host.makeFile())
        return notSeen("the command file could not be created");
    host.putContent(earlier);
    askInVain(stage);
    const std::string content = host.content();
    // What it wants to write comes now, or never.
    if (host.makeFile() && content == earlier)
        takeRequest(stage, latecomerMs);
    return keptIf(content == earlier, "While an earlier request was in the file, it became " +
                                          bytesText(content) + '.');
}

Sight createsNoFile(CompanionStage& stage)
{
    if (stage.gathered().requests.empty())
        return noRequest();
    HostRole& host = stage.host();
    host.removeFile();
    askInVain(stage);
    return keptIf(!host.hasFile(), "It created the command file of a host that had none.");
}

} // namespace

CheckedRules requestRules()
{
    return {
        {{"requests.open", "Writes an open request: mark, id, space, path, line feed."},
         Needs::instance,
         writesOpenRequest},
        {{"requests.file", "Names a file that exists, with its full path."},
         Needs::nothing,
         namesFile},
        {{"requests.machine", "Writes the machine settings of a request before it."},
         Needs::nothing,
         writesMachineFirst},
        {{"requests.machine-line", "Writes them as one line: id, two numbers, machine definition."},
         Needs::nothing,
         writesMachineLine},
        {{"requests.new-file", "Writes a new-file request: mark, id, space, line feed."},
         Needs::instance,
         writesNewFile},
        {{"requests.check-in", "Writes a check-in: CHECKIN, without a mark."},
         Needs::instance,
         writesCheckIn},
        {{"requests.sharing", "Writes while the host has its command file open."},
         Needs::nothing,
         sharesFile},
        {{"requests.release", "Closes the command file, so that the host can create it again."},
         Needs::nothing,
         releasesFile},
        {{"requests.one-write", "Writes each request at once."}, Needs::nothing, writesAtOnce},
        {{"requests.full-file", "Leaves a command file alone that is not empty."},
         Needs::instance,
         leavesFullFile},
        {{"requests.no-file", "Never creates a command file."}, Needs::instance, createsNoFile},
    };
}

} // namespace zemlink
