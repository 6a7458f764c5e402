#include "life/soaked_host.h"

#include "peer/exchange_paths.h"
#include "support/companion_double.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <string_view>
#include <utility>

namespace testing_support {

namespace {

constexpr unsigned long long betweenCheckoutsMs = 1100;
constexpr int mostMenus = 20'000;
// For any number and mix of calls; a leak of 1 KB per step exceeds this.
constexpr size_t mostGrowth = 2 << 20;
// The host stores trace lines as UTF-16, in blocks with spare capacity.
constexpr size_t memoryPerTraceByte = 4;

constexpr wchar_t mill3[] = L"Mill 3-axis", mill4[] = L"Mill 4-axis";

const std::array<SoakPart, 2> partsOfHosts[] = {
    {{{L"bracket", 17, 10, mill3, 3, {L"MB17-1", L"MB17-2"}},
      {L"flange", 23, 11, mill3, 3, {L"BF140"}}}},
    {{{L"pump cover", 31, 8, mill4, 5, {L"PC31-1", L"PC31-2"}},
      {L"clamp jaw", 42, 4, mill3, 3, {L"CJ42"}}}},
};

std::wstring ncFolder(const Installation& installation, unsigned number)
{
    return installation.path(L"nc" + std::to_wstring(number) + L"\\");
}

// The script answers message boxes and chooses in the menu, which it opens on an event.
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

// An event of the log in short form. Empty for an event not caused by a request, such as the
// detection of a host.
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

} // namespace

Lines FileTail::newLines()
{
    std::ifstream file(std::filesystem::path(path_), std::ios::binary);
    file.seekg(offset_);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    bytes.resize(bytes.rfind('\n') + 1); // empty if there is no line feed
    offset_ += std::ssize(bytes);
    return linesOf(fromUtf8(bytes));
}

void SoakCompany::readEvents()
{
    for (const std::wstring& line : log.newLines())
        if (const std::wstring event = shortEvent(line); !event.empty())
            --openEvents[event];
}

SoakedHost::SoakedHost(SoakCompany& company, unsigned number, std::uint64_t seed)
    : company_(company),
      name_(L"host" + std::to_wstring(number)),
      host_(company.installation, scriptOf(company.installation, number, seed + number), name_),
      trace_(company.installation.path(name_ + L".trace"))
{
    EXPECT_TRUE(host_.waitForCommandFile());
    EXPECT_TRUE(waitUntil([this] { return host_.window() != nullptr; }));
    trace_.newLines();
    plan_ = std::make_unique<SoakPlan>(
        SoakHostFacts{company.installation.root(), std::filesystem::temp_directory_path().wstring(),
                      ncFolder(company.installation, number), host_.process().id(),
                      static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(host_.window())),
                      static_cast<std::int32_t>(100'000 * (number + 1)), partsOfHosts[number]},
        seed + number);
}

void SoakedHost::goOn(bool withNextStep)
{
    if (!isStepOn_ && withNextStep)
        begin();
    if (!isStepOn_)
        return;
    if (act_ > 0 || isActBegun_ || hasItsTurn()) {
        while (act_ < step_.acts.size() && isDone(step_.acts[act_])) {
            ++act_;
            isActBegun_ = false;
        }
        if (step_.checksOut)
            company_.checkedOutAt = GetTickCount64();
    }
    for (std::wstring& line : trace_.newLines())
        arrived_.push_back(std::move(line));
    const bool isComplete = act_ == step_.acts.size() && arrived_.size() >= step_.trace.size() &&
                            std::ranges::none_of(step_.events, [this](const std::wstring& event) {
                                return company_.openEvents[event] > 0;
                            });
    if (isComplete || GetTickCount64() - begunAt_ > generousMs)
        end();
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

// True once the step may run; its events count as planned from then on.
bool SoakedHost::hasItsTurn()
{
    if (!step_.version.empty() && company_.committing && company_.committing != this)
        return false;
    if (step_.checksOut && GetTickCount64() - company_.checkedOutAt < betweenCheckoutsMs)
        return false;
    if (!step_.version.empty())
        company_.committing = this;
    for (const std::wstring& event : step_.events)
        ++company_.openEvents[event];
    begunAt_ = GetTickCount64();
    return true;
}

// Starts the action if it has not been started; true once it is done.
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
    } else if (isBegun) {
        // Does not open the file, because an open handle would prevent its deletion.
        std::error_code error;
        return std::filesystem::file_size(host_.commandFile(), error) == 0;
    } else {
        isActBegun_ = writeRequestOf(words);
        return false;
    }
    return true;
}

// Writes an open request from an id and a path; without them, bytes that are not a request.
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

// Also reports what is missing after a step has timed out.
void SoakedHost::end()
{
    SCOPED_TRACE(toUtf8(name_) + ", step " + std::to_string(steps_) + ": " + step_.kind);
    EXPECT_EQ(act_, step_.acts.size());
    EXPECT_EQ(arrived_, step_.trace);
    for (const std::wstring& event : step_.events)
        EXPECT_LE(company_.openEvents[event], 0) << toUtf8(event);
    if (!step_.version.empty()) {
        const std::wstring picture = step_.version + L".bmp";
        EXPECT_NE(readBytes(step_.version + L".mcam").value_or(""), "");
        EXPECT_TRUE(readBytes(picture).value_or("").starts_with("BM"));
        DeleteFileW(picture.c_str()); // they would fill the disk in a long soak
    }
    arrived_.clear();
    if (company_.committing == this)
        company_.committing = nullptr;
    isStepOn_ = false;
}

void SoakedHost::noteHeld()
{
    onPurpose_ = {};
    heldBefore_ = countsOf(host_.process().id());
    traceBytesBefore_ = traceBytes();
}

void SoakedHost::expectNothingElseHeld() const
{
    const size_t traced = traceBytes() - traceBytesBefore_;
    const size_t mostBytes =
        heldBefore_.privateBytes + onPurpose_.bytes + mostGrowth + memoryPerTraceByte * traced;
    ProcessCounts now;
    EXPECT_TRUE(waitUntil([&] {
        now = countsOf(host_.process().id());
        return now.handles == heldBefore_.handles + onPurpose_.handles &&
               now.threads == heldBefore_.threads && now.privateBytes <= mostBytes;
    }));
    std::printf("%ls, %zu steps: handles %zu to %zu (%zu on purpose), threads %zu to %zu, private "
                "bytes %zu to %zu (%zu on purpose, and %zu of trace)\n",
                name_.c_str(), steps_, heldBefore_.handles, now.handles, onPurpose_.handles,
                heldBefore_.threads, now.threads, heldBefore_.privateBytes, now.privateBytes,
                onPurpose_.bytes, traced);
}

// The stand-in host also keeps its trace in memory.
size_t SoakedHost::traceBytes() const
{
    return static_cast<size_t>(
        std::filesystem::file_size(company_.installation.path(name_ + L".trace")));
}

void SoakedHost::close()
{
    PostMessageW(host_.window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(host_.process().waitForExit(), 0u);
    EXPECT_EQ(trace_.newLines(), Lines{L"ui m_close(0) -> 0"});
}

} // namespace testing_support
