// Two real hosts with the shipped add-in and one real Companion under a mixed load: nothing is
// lost, and afterwards the hosts hold only the resources listed in docs/life.md.
//
// The environment variables SOAK_SECONDS and SOAK_SEED set the duration and the random seed.
#include "life/life_table.h"
#include "life/soak_plan.h"
#include "peer/exchange_paths.h"
#include "support/companion_double.h"
#include "support/companion_program.h"
#include "support/counts.h"
#include "support/file_tail.h"
#include "support/host_program.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <thread>

using namespace testing_support;

namespace {

constexpr unsigned long usualSeconds = 10;
constexpr unsigned long usualSeed = 20'261;
constexpr size_t mostMenus = 20'000;
// For any number and mix of calls; a leak of 1 KB per step exceeds this.
constexpr size_t mostGrowth = 2 << 20;
// The host stores trace lines as UTF-16, in blocks with spare capacity.
constexpr size_t memoryPerTraceByte = 4;

const std::vector<SoakPart> partsOfHosts[] = {{{L"bracket", 17, 2}, {L"flange", 23, 1}},
                                              {{L"pump cover", 31, 2}, {L"clamp jaw", 42, 1}}};

// An event of the Companion's log in short form: without date and time, and without values that are
// not known in advance or not predicted. Empty for an event that no step predicts.
std::wstring shortEvent(const std::wstring& line)
{
    constexpr size_t dateTimeAndSpace = 24;
    static const std::set<std::wstring> unpredicted = {
        L"started", L"stopped", L"library",   L"host-found", L"host-gone", L"settings",
        L"sent",    L"about",   L"check-out", L"new-file",   L"check-in"};
    static const std::map<std::wstring, std::wstring> endings = {
        {L"line", L" "},        {L"command", L" "},     {L"nc-program", L" "},
        {L"taken", L" after="}, {L"commit", L" from="}, {L"setup-sheet", L" file="}};
    const std::wstring event = line.substr(std::min(line.size(), dateTimeAndSpace));
    const std::wstring word = event.substr(0, event.find(L' '));
    if (unpredicted.contains(word))
        return {};
    return endings.contains(word) ? event.substr(0, event.find(endings.at(word))) : event;
}

// True for the lines of a trace that the steps predict: calls of the add-in, files opened and
// saved, message boxes.
bool isPredicted(const std::wstring& line)
{
    static const wchar_t* const others[] = {L" set_db_unchanged(",
                                            L" SetActiveMachine(",
                                            L".position",
                                            L" NCPrefix(",
                                            L" NCSuffix(",
                                            L" list_manager(",
                                            L" RunSetupSheet",
                                            L" screen_to_bitmap_file(",
                                            L" menu(",
                                            L" OMgetActiveMachineGroup("};
    return std::ranges::none_of(
        others, [&](const wchar_t* other) { return line.find(other) != line.npos; });
}

// State shared by the hosts of a soak, each of which has a thread.
class Company {
public:
    explicit Company(const Installation& where)
        : installation(where), log_(where.path(L"sys\\companion.log"))
    {
    }

    void expectEvents(const Lines& events)
    {
        const std::lock_guard lock(mutex_);
        for (const std::wstring& event : events)
            ++open_[event];
    }
    // How many of these events, or of all, have not occurred yet. Below 0: more than expected.
    int openEvents(const Lines& events)
    {
        int open = 0;
        const std::lock_guard lock(mutex_);
        readLog();
        for (const std::wstring& event : events)
            open += std::max(open_[event], 0);
        return open;
    }
    std::map<std::wstring, int> allOpenEvents()
    {
        readLog();
        return open_;
    }

    std::string endOfLog() const
    {
        const std::string log = readBytes(installation.path(L"sys\\companion.log")).value_or("");
        return log.substr(log.size() - std::min<size_t>(log.size(), 2000));
    }

    const Installation& installation;
    // Commits run one at a time: two hosts that find the same end of the commit file overwrite each
    // other's records, and they share one screen picture.
    std::mutex committing;
    // Two check-outs in the same second would use the same file name.
    std::mutex checkingOut;
    unsigned long long checkedOutAt = 0; // milliseconds

private:
    void readLog()
    {
        for (const std::wstring& line : log_.newLines())
            if (const std::wstring event = shortEvent(line); !event.empty())
                --open_[event];
    }

    std::mutex mutex_;
    FileTail log_;
    std::map<std::wstring, int> open_; // expected minus occurred
};

// A real host that runs the steps of a plan. Any deviation from the plan fails the test.
class SoakedHost {
public:
    // Starts the host with this number, counted from 0, and waits until it is ready.
    SoakedHost(Company& company, unsigned number, std::uint64_t seed)
        : company_(company),
          name_(L"host" + std::to_wstring(number)),
          seed_(seed),
          ncFolder_(company.installation.path(L"nc" + std::to_wstring(number) + L"\\")),
          host_(company.installation, script(), name_),
          trace_(company.installation.path(name_ + L".trace"))
    {
        EXPECT_TRUE(host_.waitForCommandFile());
        EXPECT_TRUE(waitUntil([this] { return host_.window() != nullptr; }));
        // The window and the file are there before m_open returns and its line is written.
        EXPECT_TRUE(waitUntil([this] { return !trace_.newLines().empty(); }));
        plan_ = std::make_unique<SoakPlan>(
            SoakHostFacts{company.installation.root(), host_.process().id(),
                          static_cast<std::int32_t>(100'000 * (number + 1)), partsOfHosts[number]},
            seed + number);
    }

    size_t steps() const { return steps_; }
    const SoakPlan& plan() const { return *plan_; }

    void runNextStep()
    {
        const PlannedStep step = plan_->next();
        SCOPED_TRACE("SOAK_SEED=" + std::to_string(seed_) + ", " + toUtf8(name_) + ", step " +
                     std::to_string(++steps_) + ": " + step.kind);
        for (const std::string& call : step.calls) {
            onPurpose_.handles += lifeTable().at(call).handles;
            onPurpose_.bytes += lifeTable().at(call).bytes;
        }
        const bool checksOut = std::ranges::count(step.calls, "m_load") > 0;
        std::unique_lock commitTurn(company_.committing, std::defer_lock);
        std::unique_lock checkoutTurn(company_.checkingOut, std::defer_lock);
        if (!step.version.empty())
            commitTurn.lock();
        if (checksOut) {
            checkoutTurn.lock();
            waitUntil(
                [&] { return GetTickCount64() - company_.checkedOutAt > betweenCheckoutsMs; });
        }
        company_.expectEvents(step.events);
        Lines arrived;
        const auto hasTrace = [&] {
            for (std::wstring& line : trace_.newLines())
                if (isPredicted(line))
                    arrived.push_back(std::move(line));
            return arrived.size() >= step.trace.size();
        };
        for (const std::wstring& act : step.acts)
            EXPECT_TRUE(act == L"await" ? waitUntil(hasTrace) : carryOut(act)) << toUtf8(act);
        // Not asked again: the other host may expect the same events by then.
        const bool isComplete =
            waitUntil([&] { return hasTrace() && company_.openEvents(step.events) == 0; });
        EXPECT_EQ(arrived, step.trace);
        EXPECT_TRUE(isComplete) << "too few lines, or the Companion's log lacks events";
        if (checksOut)
            company_.checkedOutAt = GetTickCount64();
        if (!step.version.empty()) {
            const std::wstring picture = step.version + L".bmp";
            EXPECT_NE(readBytes(step.version + L".mcam").value_or(""), "");
            EXPECT_TRUE(readBytes(picture).value_or("").starts_with("BM"));
            DeleteFileW(picture.c_str()); // they would fill the disk in a long soak
        }
    }

    // Records the resources held by the process between steps.
    void noteHeld()
    {
        onPurpose_ = {};
        heldBefore_ = countsOf(host_.process().id());
        traceBytesBefore_ = traceBytes();
    }

    // Waits until the process holds exactly the recorded resources plus those its calls left open
    // on purpose, and prints the counts.
    void expectNothingElseHeld() const
    {
        const ProcessCounts& before = heldBefore_;
        const size_t traced = traceBytes() - traceBytesBefore_;
        const size_t mostBytes =
            before.privateBytes + onPurpose_.bytes + mostGrowth + memoryPerTraceByte * traced;
        ProcessCounts now;
        EXPECT_TRUE(waitUntil([&] {
            now = countsOf(host_.process().id());
            return now.handles == before.handles + onPurpose_.handles &&
                   now.threads == before.threads && now.privateBytes <= mostBytes;
        }));
        std::printf("%ls, %zu steps: handles %zu to %zu (%zu on purpose), threads %zu to %zu, "
                    "private bytes %zu to %zu (%zu on purpose, and %zu of trace)\n",
                    name_.c_str(), steps_, before.handles, now.handles, onPurpose_.handles,
                    before.threads, now.threads, before.privateBytes, now.privateBytes,
                    onPurpose_.bytes, traced);
    }

    void close()
    {
        PostMessageW(host_.window(), WM_CLOSE, 0, 0);
        EXPECT_EQ(host_.process().waitForExit(), 0u);
        Lines lines = trace_.newLines();
        std::erase_if(lines, [](const std::wstring& line) { return !isPredicted(line); });
        EXPECT_EQ(lines, Lines{L"ui m_close(0) -> 0"});
    }

private:
    // The script answers message boxes and chooses in the menu, which it opens on an event.
    std::string script() const
    {
        std::string script = "set nc_prefix " + toUtf8(ncFolder_) + '\n';
        for (size_t i = 0; i < mostMenus; ++i)
            script += "wait-for m_notify(37) 86400000\nchoose " + toUtf8(menuChoice(i)) +
                      "\ncall m_main 0\n";
        return script;
    }

    // Carries out an action of a step; false on timeout.
    bool carryOut(const std::wstring& act) const
    {
        const std::wstring verb = act.substr(0, act.find(L' '));
        const std::wstring operands = act.substr(std::min(verb.size() + 1, act.size()));
        if (verb == L"command")
            host_.command(static_cast<unsigned>(std::stoi(operands)));
        else if (verb == L"companion")
            return hasCarriedOut(operands);
        else if (verb == L"busy" || verb == L"ready")
            EnableWindow(host_.window(), verb == L"ready");
        else if (verb == L"push") // bytes that are not a request
            return sendRequest("x");
        else {
            const int id = std::stoi(operands);
            writeBytes(peer::machineSettingsPath(company_.installation.root(), id),
                       "a|4|0|C:\\Machines\\Mill.mcam-mmd\r\n");
            return sendRequest(openRequest(id, toUtf8(operands.substr(operands.find(L' ') + 1))));
        }
        return true;
    }

    bool hasCarriedOut(const std::wstring& arguments) const
    {
        const DWORD code = startCompanion(company_.installation, arguments);
        EXPECT_EQ(code, carriedOut) << "the Companion's log ends with\n" << company_.endOfLog();
        return code == carriedOut;
    }

    // Waits until the add-in has taken it.
    bool sendRequest(const std::string& bytes) const
    {
        const std::wstring file = host_.commandFile();
        const auto isTaken = [&] {
            // Does not open the file, because an open handle would prevent its deletion.
            std::error_code error;
            return std::filesystem::file_size(file, error) == 0;
        };
        return waitUntil([&] { return writeRequest(file, bytes); }) && waitUntil(isTaken);
    }

    // The stand-in host also keeps its trace in memory.
    size_t traceBytes() const
    {
        return static_cast<size_t>(
            std::filesystem::file_size(company_.installation.path(name_ + L".trace")));
    }

    Company& company_;
    const std::wstring name_;
    const std::uint64_t seed_;
    const std::wstring ncFolder_;
    const HostProgram host_;
    FileTail trace_;
    std::unique_ptr<SoakPlan> plan_;
    size_t steps_ = 0;
    ProcessCounts heldBefore_;
    size_t traceBytesBefore_ = 0;
    LeftOpen onPurpose_;
};

unsigned long fromEnvironment(const char* name, unsigned long otherwise)
{
    const char* const value = std::getenv(name);
    return value ? std::strtoul(value, nullptr, 10) : otherwise;
}

class Soak : public ::testing::Test {
protected:
    Soak()
    {
        installCompanionWithLibrary(installation);
        writeBytes(installation.path(L"cfg\\settings.ini"), "AlwaysSaveTools=y\n");
    }

    // Runs the hosts' steps until they do not go on or a check fails.
    void run(const std::function<bool(const SoakedHost&)>& goesOn)
    {
        std::vector<std::jthread> threads;
        for (const auto& host : hosts)
            threads.emplace_back([&] {
                while (goesOn(*host) && !HasFailure())
                    host->runNextStep();
            });
    }

    // The request ids of the machine-settings files in the folder.
    std::set<std::int32_t> settingsThatStay() const
    {
        const std::wstring start = L"mcsettings-";
        std::set<std::int32_t> numbers;
        for (const auto& entry : std::filesystem::directory_iterator(installation.path(L"temp"))) {
            const std::wstring name = entry.path().filename().wstring();
            if (name.starts_with(start))
                numbers.insert(std::stoi(name.substr(start.size())));
        }
        return numbers;
    }

    Installation installation{Registry::ofTheUser};
    Company company{installation};
    std::vector<std::unique_ptr<SoakedHost>> hosts;
};

} // namespace

TEST_F(Soak, losesAndLeaksNothing)
{
    const auto seed = fromEnvironment("SOAK_SEED", usualSeed);
    const auto milliseconds = 1000ULL * fromEnvironment("SOAK_SECONDS", usualSeconds);
    const CompanionProgram companion(installation);
    ASSERT_NE(companion.waitForWindow(), nullptr);
    for (unsigned number = 0; number < 2; ++number)
        hosts.push_back(std::make_unique<SoakedHost>(company, number, seed));
    run([](const SoakedHost& host) { return host.steps() < 2 * SoakPlan::warmUpSteps(); });
    for (const auto& host : hosts)
        host->noteHeld();

    const ULONGLONG end = GetTickCount64() + milliseconds;
    run([&](const SoakedHost&) { return GetTickCount64() < end; });
    ASSERT_FALSE(HasFailure());

    for (const auto& host : hosts)
        host->expectNothingElseHeld();
    for (const auto& [event, open] : company.allOpenEvents())
        EXPECT_EQ(open, 0) << "too few of this in the Companion's log: " << toUtf8(event);
    std::set<std::int32_t> neverOpened;
    for (const auto& host : hosts) {
        neverOpened.insert(host->plan().requestsNeverOpened().begin(),
                           host->plan().requestsNeverOpened().end());
        host->close();
    }
    EXPECT_EQ(settingsThatStay(), neverOpened);
    EXPECT_EQ(companion.run(L"--quit"), 0u);
}
