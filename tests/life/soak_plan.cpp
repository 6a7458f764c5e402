#include "life/soak_plan.h"

#include <algorithm>
#include <iterator>

namespace testing_support {

namespace {

constexpr int mostPasses = 12;
constexpr std::int32_t burstNcPath = 4;

// Building blocks of the steps' texts.
const std::map<std::wstring, std::wstring> pieces = {
    {L"opened", LR"(> ui DoFileOpen("{document}", false, false, 1, true, *, null) -> true
> ui SetActiveMachine("{machine}") -> true
> ui set_db_unchanged()
> ui CMastercamInterface.position1("{document}")
> ui CMastercamView.position0()
> ui CMastercamInterface.position3()
> ui CFile_DoFileSave("{document}", main, false, false) -> true
> ui set_db_unchanged())"},
    {L"emptied", LR"(> other set_db_unchanged()
> other post_FT_command("Mastercam", "OnFileNew"))"},
    {L"setup sheet", LR"(> ui RunSetupSheetOnSelectedOpsWithoutUI(*) -> true
?named = line
?named = setup-sheet id={request} file="{temp}Mastercam setup sheet {pid}.xml")"},
    {L"host save", LR"(> ui CFile_DoFileSave("{document}", main, false, true) -> {is named}
> ui CMastercamView.position0()
> ui CMastercamInterface.position3())"},
    {L"save flow", LR"(> ui NCPrefix(null) -> "{nc}"
?requested {setup sheet}
?known {host save}
?unsaved > ui message-box("TORVA ZEM", "Failed to save file.")
?saved > ui screen_to_bitmap_file("{folder}\commit\screendump.bmp", false) -> true
?saved = line
?saved = commit-notice id={request} file="{document}"
?saved = commit file="{document}" id={request}
?saved = version name="{name}" version={version} number={number} picture=yes)"},
    {L"queue", LR"({suffixes}
= line
= nc-queue file="{folder}\temp\ncqueue-{request}.txt"
{programs}
+ importNCqueue)"},
    {L"about", LR"(= command text="--about --parentwindow {window}"
= about parent={window}
+ m_about)"},
    {L"check-out", LR"(! command 42001
> ui m_load(0) -> 0
= command text="--checkout
= check-out
+ m_load)"},
};

std::wstring machinePath(const std::wstring& name)
{
    return L"C:\\Machines\\" + name + L".mcam-mmd";
}

// The step's text, line by line, each with an optional guard condition: an action (!), a line of
// the host's trace (>), a Companion event (=), a call with a row in the table (+), or the name of a
// building block.
struct Kind {
    const char* name;
    unsigned weight; // relative frequency
    const wchar_t* text;
    int part = -1; // for `send` only
};

constexpr wchar_t sendText[] = LR"(! companion --send "{name}" --host {pid}
= command text="--send "{name}" --host {pid}"
= settings id={number} host={pid} file="{folder}\temp\mcsettings-{number}.txt"
= sent id={number} host={pid} file="{document}"
= taken id={number} host={pid} request=open
{opened})";
constexpr wchar_t saveText[] = LR"(! command 42002
{save flow}
> ui m_save(0) -> 0
+ m_save)";

// Each kind runs once in this order before the random steps.
const Kind kinds[] = {
    {"send", 2, sendText, 0},
    {"send", 2, sendText, 1},
    {"check-out", 1, L"{check-out}"},
    {"about", 1, LR"(! command 42003
{about}
> ui m_about(0) -> 0)"},
    {"NC queue", 3, LR"(! command 41107
! command 42005
> ui NCPrefix(null) -> "{nc}"
> ui list_manager(1, "", 0, *)
?named {queue}
> ui importNCqueue() -> 0)"},
    {"tool picture", 3, LR"(! command 42008
> ui DrawTool(300, 400, 4, 10, 0, 59, 47, 50, 89, 12, 1)
+ DrawTool)"},
    {"tools", 2, LR"(! command 42004
{setup sheet}
> ui m_tools(0) -> 0
+ m_tools)"},
    {"menu", 4, LR"(! command 43037
> ui m_notify(37) -> 0
> ui menu(!"TORVA ZEM", -, "Open TORVA ZEM", "Website", "About", "Tools", "Import NC-Files"{recent files})
?about chosen {about}
?sheet chosen {setup sheet}
> ui m_main(0) -> 0
+ m_main)"},
    {"finishing pass", 4, L"! command 41108"},
    {"save", 12, saveText},
    {"host's own save", 2, LR"(! command 41103
{host save}
{save flow}
> ui m_notify(5) -> 0
+ m_notify)"},
    {"requests to a busy host", 3, LR"({requests}
! ready
{opened})"},
    {"requests that a check-out withdraws", 1, LR"({requests}
{check-out}
! await
! ready)"},
    {"other calls", 2, LR"(! command 42006
! command 42007
! command 42009
! command 43004
> ui importNC() -> 0
> ui renameNC() -> 1
> ui OMgetActiveMachineGroup(true) -> {machine group}
> ui TestFunction() -> 1
> ui m_notify(4) -> 0
+ importNC
+ renameNC
+ TestFunction
+ m_notify)"},
    {"event that forgets the file", 2, LR"(! command 430{event}
> ui m_notify({event code}) -> 0
+ m_notify)"},
    {"new file", 2, LR"(! companion --new-file --host {pid}
= command text="--new-file --host {pid}"
= new-file id=0 host={pid}
= taken id=0 host={pid} request=new-file
{emptied})"},
    {"check-in", 2, LR"(! companion --check-in --host {pid}
= command text="--check-in --host {pid}"
= check-in id=0 host={pid} name="{sent name}"
= taken id=0 host={pid} request=check-in
> other m_fclose(null, 0, null)
{emptied})"},
    // A document without a name, which cannot be saved: the first message box makes the system open
    // handles that it keeps.
    {"save", 0, saveText},
};

} // namespace

std::wstring soakMachine(std::int32_t requestId)
{
    return machinePath(std::to_wstring(requestId));
}

std::wstring nextMenuChoice(std::mt19937_64& random)
{
    static const wchar_t* const choices[] = {L"Open TORVA ZEM", L"About", L"Tools",
                                             L"Import NC-Files", L""};
    return choices[random() % std::size(choices)];
}

SoakPlan::SoakPlan(SoakHostFacts facts, std::uint64_t seed)
    : facts_(std::move(facts)),
      random_(seed),
      menuRandom_(seed),
      values_(pieces),
      nextRequestId_(facts_.firstRequestId)
{
    values_[L"pid"] = std::to_wstring(facts_.processId);
    values_[L"window"] = std::to_wstring(facts_.window);
    values_[L"folder"] = facts_.folder;
    values_[L"temp"] = facts_.temporaryFolder;
    values_[L"nc"] = facts_.ncFolder;
}

size_t SoakPlan::warmUpSteps()
{
    return std::size(kinds);
}

PlannedStep SoakPlan::next()
{
    static const std::vector<const Kind*> byWeight = [] {
        std::vector<const Kind*> all;
        for (const Kind& kind : kinds)
            all.insert(all.end(), kind.weight, &kind);
        return all;
    }();
    const Kind* kind = &kinds[std::min(steps_, std::size(kinds) - 1)];
    if (steps_++ >= std::size(kinds))
        do
            kind = byWeight[random_() % byWeight.size()];
        while (!isPossible(kind->name));
    PlannedStep step = {kind->name};
    prepare(kind->name, kind->part);
    describeState();
    add(step, kind->text);
    step.checksOut = step.leftOpen.contains("m_load");
    conclude(kind->name);
    if (count(step.events, L"version name=") > 0)
        step.version = filled(LR"({folder}\library\{name}\v{version})");
    return step;
}

bool SoakPlan::isPossible(const std::string& kind) const
{
    // For a document without a name, saving waits for the user. For a document that is not the
    // Companion's, it does not return once the host has reported a save.
    if (kind == "save")
        return isKnown_ || (part_ && isNotified_);
    if (kind == "host's own save")
        return isKnown_ && part_;
    return kind != "finishing pass" || (part_ && passes_ < mostPasses);
}

std::wstring SoakPlan::workFile(const SoakPart& part) const
{
    return facts_.folder + L"\\work\\" + part.name + L".mcam";
}

void SoakPlan::open(SoakPart& part, std::int32_t id, const std::wstring& machine,
                    std::int32_t ncPath)
{
    values_[L"machine"] = machine;
    values_[L"NC path"] = std::to_wstring(ncPath);
    std::erase(recentFiles_, workFile(part));
    recentFiles_.insert(recentFiles_.begin(), workFile(part));
    requestId_ = id;
    isKnown_ = true;
    isChanged_ = false;
    part_ = &part;
    passes_ = part.passesSaved;
}

// Sends requests while the host is busy, so that they stay pending; only the last one takes effect.
void SoakPlan::parkRequests(unsigned most, bool areWithdrawn)
{
    std::wstring acts = L"! busy\n";
    SoakPart* part = nullptr;
    for (auto left = 1 + random_() % most; left > 0; --left) {
        part = &facts_.parts[random_() % facts_.parts.size()];
        requestId_ = nextRequestId_++;
        acts += L"! request " + std::to_wstring(requestId_) + L' ' + workFile(*part) + L'\n';
        neverOpened_.insert(requestId_);
    }
    values_[L"requests"] = acts + L"! push";
    if (areWithdrawn)
        return;
    neverOpened_.erase(requestId_);
    open(*part, requestId_, soakMachine(requestId_), burstNcPath);
}

// Sets the placeholders for the step's text.
void SoakPlan::prepare(const std::string& name, int part)
{
    if (part >= 0) {
        SoakPart& sent = facts_.parts[static_cast<size_t>(part)];
        open(sent, sent.number, machinePath(sent.machine), sent.ncPath);
        values_[L"sent name"] = sent.name + L".mcam";
    } else if (name == "requests to a busy host") {
        parkRequests(3, false);
    } else if (name == "requests that a check-out withdraws") {
        parkRequests(2, true);
    } else if (name == "event that forgets the file") {
        // Only event 3 reports the end of a save; without it, an unknown document is not saved.
        static const wchar_t* const codes[] = {L"03", L"06", L"52"};
        values_[L"event"] = codes[isNotified_ ? random_() % 3 : 0];
        values_[L"event code"] = std::to_wstring(std::stoi(values_[L"event"]));
    } else if (name == "menu") {
        const std::wstring choice = nextMenuChoice(menuRandom_);
        guards_[L"about chosen"] = choice == L"About";
        guards_[L"sheet chosen"] = choice == L"Tools" || choice == L"Import NC-Files";
    }
}

void SoakPlan::describeState()
{
    guards_[L"named"] = part_ != nullptr;
    guards_[L"known"] = isKnown_;
    guards_[L"requested"] = requestId_ != 0;
    guards_[L"saved"] = isSaved();
    guards_[L"unsaved"] = !isSaved();
    values_[L"request"] = std::to_wstring(requestId_);
    values_[L"is named"] = part_ ? L"true" : L"false";
    values_[L"machine group"] = part_ ? L"*" : L"null";
    values_[L"document"] = part_ ? workFile(*part_) : L"";
    std::wstring& recent = values_[L"recent files"];
    recent = recentFiles_.empty() ? L"" : L", -";
    for (const std::wstring& file : recentFiles_)
        recent += L", \"" + file + L'"';
    if (!part_)
        return;
    values_[L"name"] = part_->name;
    values_[L"number"] = std::to_wstring(part_->number);
    values_[L"version"] = std::to_wstring(part_->version + 1);
    std::wstring& suffixes = values_[L"suffixes"];
    suffixes.clear();
    for (int i = 0; i < part_->operations + passes_; ++i)
        suffixes += L"> ui NCSuffix(null) -> \".NC\"\n";
    std::wstring& programs = values_[L"programs"];
    programs.clear();
    for (const std::wstring& program : part_->programs)
        programs += L"= nc-program number=" + values_[L"NC path"] + L" file=\"" + facts_.ncFolder +
                    program + L".NC\" group=\"" + part_->machine + L"\"\n";
}

void SoakPlan::add(PlannedStep& step, const std::wstring& text) const
{
    for (std::wstring line : linesOf(text)) {
        if (line.starts_with(L'?')) {
            const size_t end = line.find_first_of(L"{>=");
            if (!guards_.at(line.substr(1, end - 2)))
                continue;
            line.erase(0, end);
        }
        if (line.starts_with(L'{')) {
            add(step, values_.at(line.substr(1, line.size() - 2)));
            continue;
        }
        const std::wstring content = filled(line.substr(2));
        if (line.starts_with(L'!'))
            step.acts.push_back(content);
        else if (line.starts_with(L'>'))
            step.trace.push_back(content);
        else if (line.starts_with(L'='))
            step.events.push_back(content);
        else
            ++step.leftOpen[toUtf8(content)];
    }
}

std::wstring SoakPlan::filled(std::wstring line) const
{
    for (size_t at; (at = line.find(L'{')) != line.npos;) {
        const size_t end = line.find(L'}', at);
        line.replace(at, end + 1 - at, values_.at(line.substr(at + 1, end - at - 1)));
    }
    return line;
}

// Updates the state after the step.
void SoakPlan::conclude(const std::string& name)
{
    if (name == "save" || name == "host's own save") {
        const bool isSavedNow = isSaved();
        if (isKnown_ && part_) {
            isChanged_ = false;
            part_->passesSaved = passes_;
        }
        if (isSavedNow) {
            isKnown_ = true;
            ++part_->version;
        }
        isNotified_ = isNotified_ && name == "save";
    } else if (name == "finishing pass") {
        ++passes_;
        isChanged_ = true;
    } else if (name == "event that forgets the file") {
        isKnown_ = false;
        isNotified_ = true;
    } else if (name == "new file" || name == "check-in") {
        requestId_ = 0;
        part_ = nullptr;
        passes_ = 0;
        isChanged_ = false;
        values_[L"sent name"].clear();
        isKnown_ = isKnown_ || name == "check-in"; // its id reads 0
    }
}

} // namespace testing_support
