#include "life/soak_plan.h"
#include "life/step_texts.h"

#include <algorithm>

namespace testing_support {

namespace {

using Way = Act::Way;

constexpr size_t mostRecentFiles = 21;
constexpr std::int32_t burstNcPath = 4;
const std::wstring newFileLines[] = {L"other set_db_unchanged()",
                                     LR"(other post_FT_command("Mastercam", "OnFileNew"))"};

} // namespace

std::wstring soakMachine(std::int32_t requestId)
{
    return L"C:\\Machines\\" + std::to_wstring(requestId) + L".mcam-mmd";
}

void SoakPlan::addTold(PlannedStep& step, const std::wstring& words) const
{
    step.acts.push_back({Way::companion, 0, words});
    step.events.push_back(L"command" + field(L"text", words));
}

void SoakPlan::addTaken(PlannedStep& step, std::int32_t id, const std::wstring& request) const
{
    step.events.push_back(L"taken" + field(L"id", id) + field(L"host", facts_.processId) +
                          L" request=" + request);
}

// What opening, naming and saving a part leaves behind.
void SoakPlan::open(PlannedStep& step, int part, std::int32_t id, const std::wstring& machine,
                    std::int32_t ncPath)
{
    const std::wstring path = workFile(part);
    const std::wstring name = inQuotes(path);
    addLines(step.trace,
             {L"ui DoFileOpen(" + name + L", false, false, 1, true, *, null) -> true",
              L"ui SetActiveMachine(" + inQuotes(machine) + L") -> true", L"ui set_db_unchanged()",
              L"ui CMastercamInterface.position1(" + name + L")", L"ui CMastercamView.position0()",
              L"ui CMastercamInterface.position3()",
              L"ui CFile_DoFileSave(" + name + L", main, false, false) -> true",
              L"ui set_db_unchanged()"});
    Lines& recent = model_.recentFiles;
    recent.erase(std::remove(recent.begin(), recent.end(), path), recent.end());
    recent.insert(recent.begin(), path);
    recent.resize(std::min(recent.size(), mostRecentFiles));
    model_.requestId = id;
    model_.isKnown = true;
    model_.part = part;
    model_.passes = passesSaved_[static_cast<size_t>(part)];
    model_.isChanged = false;
    model_.ncPath = ncPath;
}

PlannedStep SoakPlan::send(int part)
{
    const SoakPart& sent = facts_.parts[static_cast<size_t>(part)];
    PlannedStep step = {"send"};
    addTold(step,
            L"--send " + inQuotes(sent.name) + L" --host " + std::to_wstring(facts_.processId));
    const std::wstring address = field(L"id", sent.number) + field(L"host", facts_.processId);
    addLines(step.events, {L"settings" + address +
                               field(L"file", facts_.folder + L"\\temp\\mcsettings-" +
                                                  std::to_wstring(sent.number) + L".txt"),
                           L"sent" + address + field(L"file", workFile(part))});
    addTaken(step, sent.number, L"open");
    open(step, part, sent.number, sent.machine, sent.ncPath);
    model_.sentName = sent.name + L".mcam";
    return step;
}

// Has requests parked while the host is busy and gives the id of the last one.
std::int32_t SoakPlan::parkRequests(PlannedStep& step, std::uint64_t count)
{
    step.acts.push_back({Way::makeBusy});
    for (std::uint64_t i = 0; i < count; ++i) {
        lastRequested_ = static_cast<int>(random_.below(facts_.parts.size()));
        neverOpened_.insert(nextRequestId_);
        step.acts.push_back({Way::request, nextRequestId_++, workFile(lastRequested_)});
    }
    step.acts.push_back({Way::pushOn});
    return nextRequestId_ - 1;
}

PlannedStep SoakPlan::requestsToABusyHost()
{
    PlannedStep step = {"requests to a busy host"};
    const std::int32_t id = parkRequests(step, 1 + random_.below(3));
    neverOpened_.erase(id);
    step.acts.push_back({Way::makeReady});
    open(step, lastRequested_, id, soakMachine(id), burstNcPath);
    return step;
}

// A check-out request takes the place of what waits.
PlannedStep SoakPlan::withdrawnRequests()
{
    PlannedStep step = {"requests that a check-out withdraws"};
    model_.requestId = parkRequests(step, 1 + random_.below(2));
    PlannedStep withdrawal = checkOut();
    step.acts.push_back(withdrawal.acts.front());
    step.acts.push_back({Way::awaitLastLine});
    step.acts.push_back({Way::makeReady});
    step.trace = withdrawal.trace;
    step.events = withdrawal.events;
    step.leftOpen = withdrawal.leftOpen;
    step.checksOut = true;
    return step;
}

void SoakPlan::closePart()
{
    model_.requestId = 0;
    model_.part = -1;
    model_.passes = 0;
    model_.isChanged = false;
    model_.sentName.clear();
}

PlannedStep SoakPlan::checkIn()
{
    PlannedStep step = {"check-in"};
    addTold(step, L"--check-in --host " + std::to_wstring(facts_.processId));
    step.events.push_back(L"check-in id=0" + field(L"host", facts_.processId) +
                          field(L"name", model_.sentName));
    addTaken(step, 0, L"check-in");
    addLines(step.trace, {L"other m_fclose(null, 0, null)", newFileLines[0], newFileLines[1]});
    closePart();
    model_.isKnown = true; // its id reads 0
    return step;
}

PlannedStep SoakPlan::newFile()
{
    PlannedStep step = {"new file"};
    addTold(step, L"--new-file --host " + std::to_wstring(facts_.processId));
    step.events.push_back(L"new-file id=0" + field(L"host", facts_.processId));
    addTaken(step, 0, L"new-file");
    addLines(step.trace, {newFileLines[0], newFileLines[1]});
    closePart();
    return step;
}

} // namespace testing_support
