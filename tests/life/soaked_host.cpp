#include "life/soaked_host.h"

#include "peer/exchange_paths.h"
#include "support/companion_double.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>
#include <utility>

namespace testing_support {

namespace {

constexpr unsigned long long betweenCheckoutsMs = 1100;
constexpr int mostMenus = 20'000;
// Whatever the calls are and however many: a leak of a kilobyte a step is well above it.
constexpr size_t mostGrowth = 2 << 20;
// The host keeps each line of the trace in characters of two bytes, in blocks with some room.
constexpr size_t memoryPerTraceByte = 4;

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

// Removes a field with an unquoted value.
void removeField(std::wstring& event, std::wstring_view start)
{
    const size_t from = event.rfind(start);
    if (from != event.npos)
        event.erase(from, std::min(event.find(L' ', from + start.size()), event.size()) - from);
}

// An event of the log in the short form. Empty for one that no request brings about, such as a host
// that was found.
std::wstring shortEvent(const std::wstring& line)
{
    constexpr size_t dateTimeAndBlank = 24;
    constexpr std::wstring_view checkOut = L"command text=\"--checkout";
    static const std::set<std::wstring> unasked = {L"started", L"stopped", L"library",
                                                   L"host-found", L"host-gone"};
    std::wstring event = line.substr(std::min(line.size(), dateTimeAndBlank));
    const std::wstring word = event.substr(0, event.find(L' '));
    if (unasked.count(word) > 0)
        return {};
    if (word == L"line" || word == L"check-out")
        return word;
    if (word == L"taken")
        removeField(event, L" after=");
    else if (word == L"commit")
        removeField(event, L" from=");
    else if (word == L"nc-program")
        removeField(event, L" bytes=");
    else if (event.starts_with(checkOut))
        event.resize(checkOut.size());
    return event;
}

std::string change(const char* what, size_t before, size_t now)
{
    return std::string(what) + ' ' + std::to_string(before) + " to " + std::to_string(now);
}

std::string listed(const Lines& lines)
{
    std::string text;
    for (const std::wstring& line : lines)
        text += "  " + toUtf8(line) + '\n';
    return text;
}

} // namespace

Lines FileTail::newLines()
{
    std::ifstream file(std::filesystem::path(path_), std::ios::binary);
    file.seekg(offset_);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    bytes.resize(bytes.rfind('\n') + 1); // nothing where there is no line feed
    offset_ += std::ssize(bytes);
    return linesOf(fromUtf8(bytes));
}

void CompanionEvents::plan(const Lines& events)
{
    for (const std::wstring& event : events)
        ++open_[event];
}

void CompanionEvents::readOn()
{
    for (const std::wstring& line : log_.newLines())
        if (const std::wstring event = shortEvent(line); !event.empty()) {
            --open_[event];
            ++count_;
        }
}

Lines CompanionEvents::missing(const Lines& events) const
{
    Lines missing;
    for (const std::wstring& event : events)
        if (const auto found = open_.find(event); found != open_.end() && found->second > 0)
            missing.push_back(event);
    return missing;
}

std::string CompanionEvents::complaint() const
{
    std::string complaint;
    for (const auto& [event, open] : open_)
        if (open != 0)
            complaint += "the Companion's log has " + std::to_string(std::abs(open)) +
                         (open > 0 ? " too few of: " : " too many of: ") + toUtf8(event) + '\n';
    return complaint;
}

SoakedHost::SoakedHost(SoakCompany& company, unsigned number, std::uint64_t seed)
    : company_(company),
      number_(number),
      seed_(seed),
      host_(company.installation, scriptOf(company.installation, number, seed + number),
            nameOf(number)),
      trace_(company.installation.path(nameOf(number) + L".trace"))
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
    for (std::wstring& line : trace_.newLines())
        arrived_.push_back(std::move(line));
    if (act_ == step_.acts.size() && arrived_.size() >= step_.trace.size() &&
        company_.events.missing(step_.events).empty())
        end();
    else if (GetTickCount64() - begunAt_ > generousMs)
        complainOfLateness();
}

void SoakedHost::begin()
{
    step_ = plan_->next();
    ++steps_;
    for (const auto& [call, times] : step_.leftOpen) {
        const LeftOpen row = lifeTable().at(call);
        onPurpose_.handles += row.handles * times;
        onPurpose_.bytes += row.bytes * times;
    }
    act_ = 0;
    isActBegun_ = false;
    isStepOn_ = true;
    begunAt_ = GetTickCount64();
}

// True once the step may act; its events are planned from then on.
bool SoakedHost::hasItsTurn()
{
    if (!step_.version.empty() && company_.committing && company_.committing != this)
        return false;
    if (step_.checksOut && GetTickCount64() - company_.checkedOutAt < betweenCheckoutsMs)
        return false;
    if (!step_.version.empty())
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
    while (act_ < step_.acts.size() && isDone(step_.acts[act_])) {
        ++act_;
        isActBegun_ = false;
    }
    if (step_.checksOut)
        company_.checkedOutAt = GetTickCount64();
}

// Begins the act if it is not begun; true once it is done.
bool SoakedHost::isDone(const std::wstring& act)
{
    const std::wstring verb = act.substr(0, act.find(L' '));
    const std::wstring words = act.substr(std::min(verb.size() + 1, act.size()));
    const bool isBegun = std::exchange(isActBegun_, true);
    if (verb == L"command") {
        host_.command(static_cast<unsigned>(std::stoi(words)));
    } else if (verb == L"companion") {
        if (!isBegun)
            start_ = std::make_unique<Process>(
                quoted(company_.installation.path(L"TORVA-ZEM.exe")) + L' ' + words);
        return !start_->isRunning() && start_->waitForExit() == 0u;
    } else if (verb == L"busy" || verb == L"ready") {
        EnableWindow(host_.window(), verb == L"ready");
    } else if (verb == L"await") {
        return arrived_.size() >= step_.trace.size();
    } else {
        if (isBegun)
            return isRequestTaken();
        isActBegun_ = writeRequestOf(words);
        return false;
    }
    return true;
}

// An id and a path; without them, bytes that are no request.
bool SoakedHost::writeRequestOf(const std::wstring& words) const
{
    if (words.empty())
        return writeRequest(host_.commandFile(), "x");
    const int id = std::stoi(words);
    writeBytes(peer::machineSettingsPath(company_.installation.root(), id),
               "a|4|0|" + toUtf8(soakMachine(id)) + "\r\n");
    return writeRequest(host_.commandFile(),
                        openRequest(id, toUtf8(words.substr(words.find(L' ') + 1))));
}

// Nothing is opened for it, because an open handle would keep the file from being deleted.
bool SoakedHost::isRequestTaken() const
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    return GetFileAttributesExW(host_.commandFile().c_str(), GetFileExInfoStandard, &data) &&
           data.nFileSizeHigh == 0 && data.nFileSizeLow == 0;
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
std::string SoakedHost::missingVersion() const
{
    if (step_.version.empty())
        return "";
    const bool hasPart = readBytes(step_.version + L".mcam").value_or("") != "";
    const bool hasPicture = readBytes(step_.version + L".bmp").value_or("").starts_with("BM");
    DeleteFileW((step_.version + L".bmp").c_str());
    return hasPart && hasPicture ? ""
                                 : "not in the library with its picture: " + toUtf8(step_.version);
}

void SoakedHost::noteHeld()
{
    onPurpose_ = {};
    heldBefore_ = countsOf(host_.process().id());
    traceBytesBefore_ = traceBytes();
}

std::string SoakedHost::heldComplaint() const
{
    const size_t mostBytes = heldBefore_.privateBytes + onPurpose_.bytes + mostGrowth +
                             memoryPerTraceByte * (traceBytes() - traceBytesBefore_);
    const auto isAsPlanned = [&] {
        const ProcessCounts now = countsOf(host_.process().id());
        return now.handles == heldBefore_.handles + onPurpose_.handles &&
               now.threads == heldBefore_.threads && now.privateBytes <= mostBytes;
    };
    return waitUntil(isAsPlanned) ? "" : heldFigures() + '\n';
}

std::string SoakedHost::heldFigures() const
{
    const ProcessCounts now = countsOf(host_.process().id());
    return change("handles", heldBefore_.handles, now.handles) + " (" +
           std::to_string(onPurpose_.handles) + " on purpose), " +
           change("threads", heldBefore_.threads, now.threads) + ", " +
           change("private bytes", heldBefore_.privateBytes, now.privateBytes) + " (" +
           std::to_string(onPurpose_.bytes) + " on purpose, and " +
           std::to_string(traceBytes() - traceBytesBefore_) + " of trace)";
}

// The stand-in host also keeps its trace in memory.
size_t SoakedHost::traceBytes() const
{
    return static_cast<size_t>(
        std::filesystem::file_size(company_.installation.path(nameOf(number_) + L".trace")));
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
