#include "tools/zemlink/session/exchange_look.h"

#include "peer/companion_log.h"
#include "peer/debug_log.h"
#include "peer/exchange_paths.h"
#include "peer/numbers.h"
#include "peer/wire_constants.h"
#include "tools/zemlink/session/event_order.h"
#include "tools/zemlink/session/local_time.h"
#include "tools/zemlink/session/log_events.h"

#include <algorithm>
#include <limits>

namespace zemlink {
namespace {

constexpr wchar_t answerEnd[] = L".tmp";
constexpr int mostRounds = 4; // of looking at what events follow from

// Check-out answers are written to the user's temporary folder.
std::wstring userTempFolder()
{
    wchar_t path[MAX_PATH + 1];
    std::wstring folder(path, GetTempPathW(MAX_PATH + 1, path));
    while (folder.ends_with(L'\\'))
        folder.pop_back();
    return folder;
}

std::wstring patternOf(const wchar_t* start, const wchar_t* end)
{
    return std::wstring(start) + L'*' + end;
}

void append(std::vector<ExchangeEvent>& to, std::vector<ExchangeEvent>&& from)
{
    std::ranges::move(from, std::back_inserter(to));
}

bool contains(const std::vector<ExchangeEvent>& events, EventKind kind)
{
    return std::ranges::find(events, kind, &ExchangeEvent::kind) != events.end();
}

// The number between the first hyphen and the next dot.
std::int64_t idInName(const std::wstring& file)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const std::wstring name = peer::fileNameOf(file);
    const size_t start = name.find(L'-') + 1;
    const std::wstring id = name.substr(start, name.find(L'.') - start);
    return peer::parseNumber(id, Limits::min(), Limits::max()).value_or(0);
}

} // namespace

ExchangeLook::ExchangeLook(const std::wstring& folder)
    : folder_(folder),
      commandFiles_(folder),
      commitFiles_(folder),
      machineSettings_(EventKind::machineSettingsWritten, folder + peer::tempFolder,
                       patternOf(peer::machineSettingsStart, peer::textEnd)),
      screenPictures_(EventKind::pictureWritten, folder + peer::commitFolder,
                      std::wstring(peer::screenPictureName) + peer::pictureEnd),
      toolPictures_(EventKind::pictureWritten, folder + peer::tempFolder,
                    patternOf(peer::toolPictureStart, peer::pictureEnd)),
      ncQueues_(EventKind::ncQueueWritten, folder + peer::tempFolder,
                patternOf(peer::ncQueueStart, peer::textEnd)),
      toolData_(EventKind::toolDataWritten, folder + peer::tempFolder,
                patternOf(peer::toolDataStart, peer::textEnd)),
      answers_(EventKind::answerWritten, userTempFolder(),
               patternOf(peer::checkoutAnswerStart, answerEnd)),
      loadLog_(peer::debugLogPath(folder)),
      companionLog_(peer::logPath(folder))
{
    for (const std::wstring& each : {folder + peer::tempFolder, folder + peer::logFolder,
                                     folder + peer::commitFolder, userTempFolder()})
        folders_.emplace_back(each);
    loadLog_.skip();
    companionLog_.skip();
    // What the first look finds has happened at any time before.
    lastAt_ = currentTime();
}

// Looks at the last steps of an exchange first, so that the same look also finds the steps that led
// to them. Command files are also looked at first: a request may exist for only a tenth of a
// second.
std::vector<ExchangeEvent> ExchangeLook::look()
{
    const std::int64_t now = currentTime();
    std::vector<ExchangeEvent> events = commandFiles_.look(now, false);
    append(events, readCompanionLog());
    append(events, commitFiles_.look(now));
    const bool isFollowed =
        contains(events, EventKind::commitWritten) || contains(events, EventKind::notice);
    for (WholeFiles* files : {&screenPictures_, &toolPictures_, &ncQueues_, &toolData_, &answers_})
        append(events, files->look(now, isFollowed));
    append(events, newSteps());
    lookAtRequests(events);
    sentRequests_.complete(events, commandFiles_.undecidedHosts());
    append(events, companion_.look(now)); // last, because finding its window takes longest
    findProcesses(events);
    putInOrder(events, lastAt_, currentTime());
    lastAt_ = events.empty() ? lastAt_ : events.back().at;
    return events;
}

// Each step follows from a request, a request from its machine settings, and taken settings from
// the first steps: whatever is found, what it follows from is looked at once more. While files keep
// changing, the rest is left for the next look. The log comes before the command files: a request
// that was logged as taken and is not seen after it has come and gone.
void ExchangeLook::lookAtRequests(std::vector<ExchangeEvent>& events)
{
    for (int round = 0; round < mostRounds; ++round) {
        const size_t known = events.size();
        const std::int64_t now = currentTime(); // when the settings are found to be gone
        append(events, machineSettings_.look(now, true));
        if (contains(events, EventKind::machineSettingsTaken))
            append(events, newSteps());
        append(events, readCompanionLog());
        append(events, commandFiles_.look(now, contains(events, EventKind::loadStep)));
        if (events.size() == known)
            break;
    }
}

std::vector<HANDLE> ExchangeLook::handles() const
{
    std::vector<HANDLE> handles = commandFiles_.processes();
    handles.push_back(companion_.process());
    for (const FolderChanges& folder : folders_)
        handles.push_back(folder.handle());
    std::erase(handles, nullptr);
    return handles;
}

DWORD ExchangeLook::nextLookMs() const
{
    constexpr DWORD soonMs = 50;
    // Nothing announces that a window opens, a semaphore comes and goes or a missing folder is
    // created.
    constexpr DWORD slowlyMs = 1000;
    return areFilesWaiting() ? soonMs : slowlyMs;
}

void ExchangeLook::rearm(bool isSlow)
{
    for (FolderChanges& folder : folders_) {
        if (folder.handle() && WaitForSingleObject(folder.handle(), 0) == WAIT_OBJECT_0)
            folder.rearm();
        if (isSlow)
            folder.renew();
    }
}

bool ExchangeLook::areFilesWaiting() const
{
    return screenPictures_.isWaiting() || toolPictures_.isWaiting() || ncQueues_.isWaiting() ||
           toolData_.isWaiting() || answers_.isWaiting() || !commandFiles_.undecidedHosts().empty();
}

std::vector<ExchangeEvent> ExchangeLook::readCompanionLog()
{
    std::vector<ExchangeEvent> notices;
    for (const std::string& line : companionLog_.newLines()) {
        for (const auto& logged : peer::parseCompanionLog(line))
            if (const auto request = logged ? findRequest(*logged, folder_) : std::nullopt)
                sentRequests_.add(*request);
            else if (const auto taking = logged ? findTaking(*logged) : std::nullopt)
                sentRequests_.addTaken(*taking);
            else if (auto notice = logged ? findNotice(*logged) : std::nullopt)
                notices.push_back(std::move(*notice));
    }
    return notices;
}

std::vector<ExchangeEvent> ExchangeLook::newSteps()
{
    std::vector<ExchangeEvent> events;
    for (std::string& line : loadLog_.newLines())
        events.push_back(
            {loadLog_.writtenAt(), EventKind::loadStep, 0, loadLog_.path(), std::move(line)});
    return events;
}

// The exchanges that do not name their host.
void ExchangeLook::findProcesses(std::vector<ExchangeEvent>& events) const
{
    for (ExchangeEvent& event : events) {
        switch (event.kind) {
        case EventKind::machineSettingsWritten:
        case EventKind::machineSettingsTaken:
        case EventKind::ncQueueWritten:
        case EventKind::toolDataWritten:
            event.process = commandFiles_.hostOfRequest(idInName(event.file));
            break;
        case EventKind::loadStep:
            event.process = commandFiles_.hostOfPart(peer::parseLoadStep(event.bytes).text);
            break;
        case EventKind::pictureWritten:
        case EventKind::notice:
            event.process = commandFiles_.onlyHost();
            break;
        default:
            break;
        }
    }
}

} // namespace zemlink
