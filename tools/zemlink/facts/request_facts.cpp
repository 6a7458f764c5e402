#include "tools/zemlink/facts/request_facts.h"

#include "peer/debug_log.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/facts/system.h"

#include <algorithm>

namespace zemlink {
namespace {

// The Companion logs within a second or so that it did not get the port.
constexpr std::uint64_t portLoggedWithinMs = 3000;
constexpr std::uint32_t mostLogBytes = 64 << 20; // the latest, of a longer log

// 0 when there is no such file.
std::uint64_t writeTime(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    return GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)
               ? ticksOf(data.ftLastWriteTime)
               : 0;
}

// Other computers are not contacted.
bool isMissing(const std::string& file)
{
    const std::wstring path = peer::fromUtf8(file);
    return !peer::mayBeRemote(path) && !peer::isFile(path);
}

void addCompanionLog(Facts& facts)
{
    const auto log = peer::readEnd(peer::logPath(facts.folder.path), mostLogBytes);
    facts.hasCompanionLog = log.has_value();
    const CompanionEvents events = eventsIn(log.value_or(""));
    facts.sentRequests = sentRequests(events);
    facts.refusedCommits = refusedCommits(events);
    for (const SentRequest& request : facts.sentRequests)
        if (isMissing(request.file))
            facts.missingFiles.push_back(request.file);
    const auto process = facts.companion.process;
    if (process && ageMs(*process) >= portLoggedWithinMs)
        facts.companion.hasPort = hasPort(events, *process);
}

} // namespace

std::vector<MachineSettingsFile> findMachineSettings(const std::wstring& folder)
{
    std::vector<MachineSettingsFile> files;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(peer::machineSettingsPattern(folder).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return files;
    do {
        if (const auto id = peer::requestOfMachineSettings(found.cFileName)) {
            files.push_back({folder + peer::tempFolder + L'\\' + found.cFileName, *id,
                             ticksOf(found.ftLastWriteTime)});
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::ranges::sort(files, {}, &MachineSettingsFile::id);
    return files;
}

void addRequestFacts(Facts& facts)
{
    const std::wstring log = peer::debugLogPath(facts.folder.path);
    facts.machineSettings = findMachineSettings(facts.folder.path);
    facts.lastLoadWritten = writeTime(log);
    facts.loads = peer::parseDebugLog(peer::readEnd(log, mostLogBytes).value_or("")).loads;
    addCompanionLog(facts);
}

} // namespace zemlink
