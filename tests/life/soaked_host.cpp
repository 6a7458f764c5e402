#include "life/soaked_host.h"

#include "endtoend/command_file_plan.h"
#include "support/companion_double.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace testing_support {

namespace {

using Way = Act::Way;

constexpr unsigned long long betweenCheckoutsMs = 1100;
constexpr int mostMenus = 20'000;

const std::array<SoakPart, 2> partsOfHosts[] = {
    {{{L"bracket",
       17,
       10,
       L"C:\\Machines\\Mill 3-axis.mcam-mmd",
       3,
       L"Mill 3-axis",
       {L"MB17-1", L"MB17-2"}},
      {L"flange", 23, 11, L"C:\\Machines\\Mill 3-axis.mcam-mmd", 3, L"Mill 3-axis", {L"BF140"}}}},
    {{{L"pump cover",
       31,
       8,
       L"C:\\Machines\\Mill 4-axis.mcam-mmd",
       5,
       L"Mill 4-axis",
       {L"PC31-1", L"PC31-2"}},
      {L"clamp jaw", 42, 4, L"C:\\Machines\\Mill 3-axis.mcam-mmd", 3, L"Mill 3-axis", {L"CJ42"}}}},
};

std::wstring nameOf(unsigned number)
{
    return L"host" + std::to_wstring(number);
}

std::wstring ncFolder(const Installation& installation, unsigned number)
{
    return installation.path(L"nc" + std::to_wstring(number) + L"\\");
}

// The script answers the boxes and chooses in the menu, which it opens on an event.
std::string scriptOf(const Installation& installation, unsigned number, std::uint64_t seed)
{
    std::string script = "set nc_prefix " + toUtf8(ncFolder(installation, number)) + '\n';
    SoakMenu menu(seed);
    for (int i = 0; i < mostMenus; ++i)
        script += "wait-for m_notify(37) 86400000\nchoose " + toUtf8(menu.nextChoice()) +
                  "\ncall m_main 0\n";
    return script;
}

std::string listed(const Lines& lines)
{
    std::string text;
    for (const std::wstring& line : lines)
        text += "  " + toUtf8(line) + '\n';
    return text;
}

} // namespace

SoakedHost::SoakedHost(SoakCompany& company, unsigned number, std::uint64_t seed)
    : company_(company),
      number_(number),
      seed_(seed),
      host_(company.installation, scriptOf(company.installation, number, seed + number),
            nameOf(number)),
      trace_(company.installation.path(nameOf(number) + L".trace")),
      held_(host_.process().id(), company.installation.path(nameOf(number) + L".trace"))
{
    if (!host_.waitForCommandFile() || !waitUntil([this] { return host_.window() != nullptr; })) {
        complain("the host does not get ready");
        return;
    }
    trace_.newLines();
    const auto window =
        static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(host_.window()));
    plan_ = std::make_unique<SoakPlan>(
        SoakHostFacts{company.installation.root(), std::filesystem::temp_directory_path().wstring(),
                      ncFolder(company.installation, number), host_.process().id(), window,
                      static_cast<std::int32_t>(100'000 * (number + 1)), partsOfHosts[number]},
        seed + number);
}

void SoakedHost::goOn(bool withNextStep)
{
    if (!complaint_.empty())
        return;
    if (!isStepOn_ && withNextStep)
        begin();
    if (!isStepOn_)
        return;
    act();
    if (isOver())
        end();
    else if (GetTickCount64() - begunAt_ > generousMs)
        complainOfLateness();
}

void SoakedHost::begin()
{
    step_ = plan_->next();
    ++steps_;
    held_.add(step_.leftOpen);
    act_ = 0;
    isActBegun_ = false;
    isStepOn_ = true;
    begunAt_ = GetTickCount64();
}

// True once the step may act; its events are planned from then on.
bool SoakedHost::hasItsTurn()
{
    if (step_.version && company_.committing && company_.committing != this)
        return false;
    if (step_.checksOut && GetTickCount64() - company_.checkedOutAt < betweenCheckoutsMs)
        return false;
    if (step_.version)
        company_.committing = this;
    company_.events.plan(step_.events);
    begunAt_ = GetTickCount64();
    return true;
}

// Does what can be done just now.
void SoakedHost::act()
{
    if (act_ == 0 && !isActBegun_ && !hasItsTurn())
        return;
    while (act_ < step_.acts.size() && isActDone(step_.acts[act_])) {
        ++act_;
        isActBegun_ = false;
    }
    if (step_.checksOut)
        company_.checkedOutAt = GetTickCount64();
}

// Begins the act if it is not begun; true once it is done.
bool SoakedHost::isActDone(const Act& act)
{
    const bool isBegun = std::exchange(isActBegun_, true);
    switch (act.way) {
    case Way::command:
        host_.command(static_cast<unsigned>(act.number));
        return true;
    case Way::companion:
        if (!isBegun)
            start_ = std::make_unique<Process>(
                quoted(company_.installation.path(L"TORVA-ZEM.exe")) + L' ' + act.text);
        return !start_->isRunning() && start_->waitForExit() == 0u;
    case Way::makeBusy:
    case Way::makeReady:
        EnableWindow(host_.window(), act.way == Way::makeReady);
        return true;
    case Way::request:
    case Way::pushOn:
        if (isBegun)
            return isRequestTaken();
        isActBegun_ = isRequestWritten(act);
        return false;
    case Way::awaitLastLine:
        return arrived_.size() >= step_.trace.size();
    }
    return false;
}

bool SoakedHost::isRequestWritten(const Act& act) const
{
    if (act.way == Way::pushOn)
        return writeRequest(host_.commandFile(), "x");
    writeBytes(machineSettingsPath(company_.installation, act.number),
               "a|4|0|" + toUtf8(soakMachine(act.number)) + "\r\n");
    return writeRequest(host_.commandFile(), openRequest(act.number, toUtf8(act.text)));
}

// Nothing is opened for it, so that it never stands in the way of who deletes the file.
bool SoakedHost::isRequestTaken() const
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    return GetFileAttributesExW(host_.commandFile().c_str(), GetFileExInfoStandard, &data) &&
           data.nFileSizeHigh == 0 && data.nFileSizeLow == 0;
}

bool SoakedHost::isOver()
{
    for (std::wstring& line : trace_.newLines())
        arrived_.push_back(std::move(line));
    return act_ == step_.acts.size() && arrived_.size() >= step_.trace.size() &&
           company_.events.missing(step_.events).empty();
}

void SoakedHost::end()
{
    if (arrived_ != step_.trace)
        complain(firstDifference());
    if (const std::string missing = missingVersion(); !missing.empty())
        complain(missing);
    arrived_.clear();
    if (company_.committing == this)
        company_.committing = nullptr;
    isStepOn_ = false;
}

void SoakedHost::complain(const std::string& what)
{
    complaint_ += "seed " + std::to_string(seed_) + ", " + name() + ", step " +
                  std::to_string(steps_) + " (" + step_.kind + "): " + what + '\n';
}

void SoakedHost::complainOfLateness()
{
    if (!host_.process().isRunning())
        complain("the host has ended");
    else if (act_ < step_.acts.size())
        complain("act " + std::to_string(act_ + 1) + " of " + std::to_string(step_.acts.size()) +
                 " does not come to its end");
    if (arrived_ != step_.trace)
        complain(firstDifference());
    if (const Lines missing = company_.events.missing(step_.events); !missing.empty())
        complain("missing in the Companion's log:\n" + listed(missing));
    isStepOn_ = false;
}

std::string SoakedHost::firstDifference() const
{
    const auto [planned, seen] =
        std::mismatch(step_.trace.begin(), step_.trace.end(), arrived_.begin(), arrived_.end());
    return "the host's trace has\n" + listed({seen, arrived_.end()}) + "in place of\n" +
           listed({planned, step_.trace.end()});
}

// The pictures go once they were seen: a long soak would fill the disk with them.
std::string SoakedHost::missingVersion()
{
    if (!step_.version)
        return "";
    const std::wstring version = company_.installation.path(
        L"library\\" + step_.version->part + L"\\v" + std::to_wstring(step_.version->version));
    const bool hasPart = readBytes(version + L".mcam").value_or("") != "";
    const bool hasPicture = readBytes(version + L".bmp").value_or("").substr(0, 2) == "BM";
    DeleteFileW((version + L".bmp").c_str());
    return hasPart && hasPicture ? "" : "not in the library with its picture: " + toUtf8(version);
}

std::string SoakedHost::close()
{
    PostMessageW(host_.window(), WM_CLOSE, 0, 0);
    if (host_.process().waitForExit() != 0u)
        return "the host does not close with 0\n";
    const Lines last = trace_.newLines();
    return last == Lines{L"ui m_close(0) -> 0"} ? ""
                                                : "at its end the host traced\n" + listed(last);
}

} // namespace testing_support
