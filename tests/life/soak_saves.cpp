#include "life/soak_plan.h"
#include "life/step_texts.h"

namespace testing_support {

namespace {

// The commands of the host's menu.
constexpr std::int32_t hostSaveCommand = 41103;
constexpr std::int32_t finishingPassCommand = 41108;
constexpr std::int32_t saveCommand = 42002;
const std::wstring failedSave = LR"(ui message-box("TORVA ZEM", "Failed to save file."))";

} // namespace

void SoakPlan::addSaveThroughHost(PlannedStep& step)
{
    addLines(step.trace, {L"ui CFile_DoFileSave(" + inQuotes(documentName()) +
                              L", main, false, true) -> " + (isNamed() ? L"true" : L"false"),
                          L"ui CMastercamView.position0()", L"ui CMastercamInterface.position3()"});
    if (!isNamed())
        return;
    model_.isChanged = false;
    passesSaved_[static_cast<size_t>(model_.part)] = model_.passes;
}

void SoakPlan::addCommit(PlannedStep& step)
{
    const std::wstring file = field(L"file", documentName());
    const std::wstring id = field(L"id", model_.requestId);
    const int version = ++versions_[static_cast<size_t>(model_.part)];
    step.version = StoredVersion{openPart().name, version};
    addLines(step.events,
             {L"line", L"commit-notice" + id + file, L"commit" + file + id,
              L"version" + field(L"name", openPart().name) + field(L"version", version) +
                  field(L"number", openPart().number) + L" picture=yes"});
}

void SoakPlan::addSaveFlow(PlannedStep& step)
{
    step.trace.push_back(L"ui NCPrefix(null) -> " + inQuotes(facts_.ncFolder));
    if (model_.requestId != 0)
        addSetupSheet(step);
    if (model_.isKnown)
        addSaveThroughHost(step);
    if (!isNamed() || (!model_.isKnown && model_.isChanged)) {
        step.trace.push_back(failedSave);
        return;
    }
    step.trace.push_back(L"ui screen_to_bitmap_file(" +
                         inQuotes(facts_.folder + L"\\commit\\screendump.bmp") +
                         L", false) -> true");
    model_.isKnown = true;
    addCommit(step);
}

PlannedStep SoakPlan::save()
{
    PlannedStep step = commanded("save", saveCommand);
    addSaveFlow(step);
    step.trace.push_back(L"ui m_save(0) -> 0");
    step.leftOpen["m_save"] = 1;
    return step;
}

PlannedStep SoakPlan::hostSave()
{
    PlannedStep step = commanded("host's own save", hostSaveCommand);
    addSaveThroughHost(step);
    addSaveFlow(step);
    step.trace.push_back(L"ui m_notify(5) -> 0");
    step.leftOpen["m_notify"] = 1;
    model_.isNotified = false;
    return step;
}

PlannedStep SoakPlan::finishingPass()
{
    ++model_.passes;
    model_.isChanged = true;
    return commanded("finishing pass", finishingPassCommand);
}

} // namespace testing_support
