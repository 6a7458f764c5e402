#include "tools/zemlink/support_archive.h"

#include "peer/companion_files.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/facts/gather_facts.h"
#include "tools/zemlink/output.h"
#include "tools/zemlink/reports/problems.h"
#include "tools/zemlink/reports/status.h"
#include "tools/zemlink/session/file_listing.h"
#include "tools/zemlink/session/file_look.h"
#include "tools/zemlink/session/recording.h"
#include "tools/zemlink/session/redacted_logs.h"
#include "tools/zemlink/session/running_recording.h"
#include "tools/zemlink/session/zip_file.h"

#include <stdexcept>

namespace zemlink {
namespace {

constexpr std::uint64_t largestLog = 64 << 20;
constexpr std::uint64_t growth = 1 << 20; // between looking at a log's size and reading it

struct Logs {
    std::string companion{}, loads{}, settings{};
};

// The end of a file that is longer.
std::string readLog(const std::wstring& path)
{
    const std::uint64_t size = peer::fileSize(path);
    const std::uint64_t start = size > largestLog ? size - largestLog : 0;
    return readFrom(path, start, largestLog + growth).value_or("");
}

Logs readLogs(const std::wstring& folder)
{
    return {readLog(folder + peer::companionLog), readLog(folder + peer::debugLog),
            readLog(folder + peer::settingsFile)};
}

struct Collected {
    Facts facts{};
    Report status{}, problems{}, listing{};
    Logs logs{};
    std::optional<Recording> recording{};
    std::string recordingLeftOut{}; // why; empty: it was not
};

// The one that the user names, or the one under way, which has no file until its first pause and
// may be written at this moment.
void addRecording(Collected& collected, const Arguments& arguments)
{
    if (!arguments.recording.empty()) {
        collected.recording = readRecording(peer::fromUtf8(arguments.recording));
        return;
    }
    const std::wstring path = findRunningRecording();
    try {
        if (peer::isFile(path))
            collected.recording = readRecording(path);
    } catch (const std::runtime_error& error) {
        collected.recordingLeftOut = error.what();
    }
}

Collected collect(const Arguments& arguments)
{
    const Facts facts = gatherFacts(Tests::made);
    Collected collected{facts, statusReport(facts), doctorOutcome(facts, true).report,
                        listingReport(describeFiles(facts.folder.path)),
                        readLogs(facts.folder.path)};
    addRecording(collected, arguments);
    return collected;
}

// The names in what doctor says, which are not in the status.
void addNamesOf(Pseudonyms& names, const Facts& facts)
{
    for (const Host& host : facts.hosts) {
        names.addText(host.dialog);
        names.addPath(host.program);
    }
    for (const HostWithoutAddIn& host : facts.hostsWithoutAddIn) {
        names.addPath(host.program);
        names.addPath(host.addIn);
    }
    for (const OpenPath& open : facts.openPaths) {
        names.addPath(open.path);
        for (const std::wstring& account : open.accounts)
            names.addText(account);
    }
    for (const std::wstring& copy : facts.workingCopies)
        names.addPath(copy);
    if (facts.setup)
        names.addPath(facts.setup->hostFolder);
    names.addPath(facts.port.program);
    for (const peer::LoggedLoad& load : facts.loads)
        names.addPath(peer::fromAnsi(load.file));
    for (const SentRequest& request : facts.sentRequests)
        names.addPath(peer::fromUtf8(request.file));
    for (const RefusedCommit& commit : facts.refusedCommits)
        names.addPath(peer::fromUtf8(commit.file));
}

// The status shows the settings in force, so that the file, whose lines may hold anything, is left
// out.
void redact(Collected& collected)
{
    Pseudonyms names;
    names.addReport(collected.status);
    addNamesOf(names, collected.facts);
    names.addReport(collected.listing);
    addNamesOfCompanionLog(names, collected.logs.companion);
    addNamesOfLoadLog(names, collected.logs.loads);
    if (collected.recording)
        addNamesOf(names, *collected.recording);
    for (Report* report : {&collected.status, &collected.problems, &collected.listing})
        *report = names.replaceInReport(*report);
    collected.logs = {redactedCompanionLog(names, collected.logs.companion),
                      redactedLoadLog(names, collected.logs.loads)};
    if (collected.recording)
        collected.recording = redacted(std::move(*collected.recording), names);
}

std::vector<ZipEntry> entriesOf(const Collected& collected)
{
    std::vector<ZipEntry> entries = {
        {"status.json", jsonText(collected.status, JsonLayout::indented)},
        {"doctor.json", jsonText(collected.problems, JsonLayout::indented)},
        {"listing.json", jsonText(collected.listing, JsonLayout::indented)}};
    const auto addLog = [&](const char* name, const std::string& text) {
        if (!text.empty())
            entries.push_back({name, text});
    };
    addLog("logs/companion.log", collected.logs.companion);
    addLog("logs/mcxlog.txt", collected.logs.loads);
    addLog("logs/settings.ini", collected.logs.settings);
    if (collected.recording)
        entries.push_back({"recording.zip", formatRecording(*collected.recording)});
    return entries;
}

} // namespace

Outcome writeSupportArchive(const Arguments& arguments)
{
    const std::wstring path = peer::fromUtf8(arguments.path);
    if (const auto existing = findExisting(path))
        return *existing;
    Collected collected = collect(arguments);
    if (arguments.isRedacted)
        redact(collected);
    const std::vector<ZipEntry> entries = entriesOf(collected);
    if (!peer::createFile(path, formatZip(entries)))
        return failure("file-not-written", arguments.path + " cannot be written");
    Report report{{"report", arguments.path}, {"redacted", arguments.isRedacted}};
    for (const ZipEntry& entry : entries)
        report["entries"].push_back(Report{{"name", entry.name}, {"bytes", entry.bytes.size()}});
    if (!collected.recordingLeftOut.empty())
        report["recordingLeftOut"] = collected.recordingLeftOut;
    return {report};
}

} // namespace zemlink
