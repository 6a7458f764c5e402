#include "life/soak_plan.h"
#include "life/step_texts.h"

namespace testing_support {

namespace {

using Way = Act::Way;

// The commands of the host's menu.
constexpr std::int32_t postCommand = 41107;
constexpr std::int32_t loadCommand = 42001;
constexpr std::int32_t aboutCommand = 42003;
constexpr std::int32_t toolsCommand = 42004;
constexpr std::int32_t queueCommand = 42005;
constexpr std::int32_t importCommand = 42006;
constexpr std::int32_t renameCommand = 42007;
constexpr std::int32_t drawCommand = 42008;
constexpr std::int32_t testCommand = 42009;
constexpr std::int32_t eventCommand = 43000; // plus its code
constexpr int eventThatOpensTheMenu = 37;    // in the host's script

} // namespace

PlannedStep SoakPlan::commanded(const char* kind, std::int32_t command) const
{
    return {kind, {{Way::command, command}}};
}

void SoakPlan::addSetupSheet(PlannedStep& step) const
{
    step.trace.push_back(L"ui RunSetupSheetOnSelectedOpsWithoutUI(*) -> true");
    if (!isNamed())
        return;
    const std::wstring sheet = facts_.temporaryFolder + L"Mastercam setup sheet " +
                               std::to_wstring(facts_.processId) + L".xml";
    addLines(step.events,
             {L"line", L"setup-sheet" + field(L"id", model_.requestId) + field(L"file", sheet)});
}

void SoakPlan::addQueue(PlannedStep& step) const
{
    for (int i = 0; i < openPart().operations + model_.passes; ++i)
        step.trace.push_back(LR"(ui NCSuffix(null) -> ".NC")");
    addLines(
        step.events,
        {L"line", L"nc-queue" + field(L"file", facts_.folder + L"\\temp\\ncqueue-" +
                                                   std::to_wstring(model_.requestId) + L".txt")});
    for (const std::wstring& program : openPart().programs)
        step.events.push_back(L"nc-program" + field(L"number", model_.ncPath) +
                              field(L"file", facts_.ncFolder + program + L".NC") +
                              field(L"group", openPart().topGroup));
    step.leftOpen["importNCqueue"] = 1;
}

PlannedStep SoakPlan::ncQueue()
{
    PlannedStep step = commanded("NC queue", postCommand);
    step.acts.push_back({Way::command, queueCommand});
    addLines(step.trace, {L"ui NCPrefix(null) -> " + inQuotes(facts_.ncFolder),
                          L"ui list_manager(1, \"\", 0, *)"});
    if (isNamed())
        addQueue(step);
    step.trace.push_back(L"ui importNCqueue() -> 0");
    return step;
}

PlannedStep SoakPlan::toolPicture()
{
    PlannedStep step = commanded("tool picture", drawCommand);
    step.trace.push_back(L"ui DrawTool(300, 400, 4, 10, 0, 59, 47, 50, 89, 12, 1)");
    step.leftOpen["DrawTool"] = 1;
    return step;
}

PlannedStep SoakPlan::tools()
{
    PlannedStep step = commanded("tools", toolsCommand);
    addSetupSheet(step);
    step.trace.push_back(L"ui m_tools(0) -> 0");
    step.leftOpen["m_tools"] = 1;
    return step;
}

void SoakPlan::addAbout(PlannedStep& step) const
{
    const std::wstring window = std::to_wstring(facts_.window);
    addLines(step.events, {L"command" + field(L"text", L"--about --parentwindow " + window),
                           L"about parent=" + window});
    step.leftOpen["m_about"] = 1;
}

PlannedStep SoakPlan::menu()
{
    PlannedStep step = commanded("menu", eventCommand + eventThatOpensTheMenu);
    std::wstring rows =
        LR"(ui menu(!"TORVA ZEM", -, "Open TORVA ZEM", "Website", "About", "Tools", "Import NC-Files")";
    if (!model_.recentFiles.empty())
        rows += L", -";
    for (const std::wstring& file : model_.recentFiles)
        rows += L", " + inQuotes(file);
    addLines(step.trace, {L"ui m_notify(37) -> 0", rows + L")"});
    const std::wstring choice = menu_.nextChoice();
    if (choice == L"About")
        addAbout(step);
    else if (choice == L"Tools" || choice == L"Import NC-Files")
        addSetupSheet(step);
    step.trace.push_back(L"ui m_main(0) -> 0");
    step.leftOpen["m_main"] = 1;
    return step;
}

PlannedStep SoakPlan::about()
{
    PlannedStep step = commanded("about", aboutCommand);
    addAbout(step);
    step.trace.push_back(L"ui m_about(0) -> 0");
    return step;
}

PlannedStep SoakPlan::checkOut()
{
    PlannedStep step = commanded("check-out", loadCommand);
    step.trace.push_back(L"ui m_load(0) -> 0");
    addLines(step.events, {L"command text=\"--checkout", L"check-out"});
    step.leftOpen["m_load"] = 1;
    step.checksOut = true;
    return step;
}

PlannedStep SoakPlan::forgettingEvent()
{
    static constexpr int codes[] = {3, 6, 52};
    // Without a report of the host that the save is over, a document that is not known is none to
    // save.
    const int code = model_.isNotified ? codes[random_.below(3)] : 3;
    PlannedStep step = commanded("event that forgets the file", eventCommand + code);
    step.trace.push_back(L"ui m_notify(" + std::to_wstring(code) + L") -> 0");
    step.leftOpen["m_notify"] = 1;
    model_.isKnown = false;
    model_.isNotified = true;
    return step;
}

PlannedStep SoakPlan::otherCalls()
{
    PlannedStep step = {"other calls"};
    for (const std::int32_t command : {importCommand, renameCommand, testCommand, eventCommand + 4})
        step.acts.push_back({Way::command, command});
    addLines(step.trace,
             {L"ui importNC() -> 0", L"ui renameNC() -> 1",
              std::wstring(L"ui OMgetActiveMachineGroup(true) -> ") + (isNamed() ? L"*" : L"null"),
              L"ui TestFunction() -> 1", L"ui m_notify(4) -> 0"});
    step.leftOpen = {{"importNC", 1}, {"renameNC", 1}, {"TestFunction", 1}, {"m_notify", 1}};
    return step;
}

} // namespace testing_support
