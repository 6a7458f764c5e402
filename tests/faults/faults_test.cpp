// Checks the fault table of the documentation row by row: the effect on each entry point when a
// system or host call fails. A row that differs prints the correct line.
#include "documents/pages.h"
#include "faults/scenarios.h"
#include "framework/framework.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <stdexcept>

using namespace testing_support;

namespace {

// The effect on a scenario when every call of one kind fails: a table row of the page, below the
// heading "## scenario": "| `fault` | user | disk | afterwards |".
struct FaultRow {
    std::string scenario;
    std::string fault; // "WriteFile", "DoFileOpen fails", "DoFileOpen raises"
    std::string user;
    std::string disk;
    std::string afterwards; // the next run without a fault
};

// The table row, without line end.
std::string asLine(const FaultRow& row)
{
    return "| `" + row.fault + "` | " + row.user + " | " + row.disk + " | " + row.afterwards + " |";
}

// Used by GoogleTest.
void PrintTo(const FaultRow& row, std::ostream* stream)
{
    *stream << row.scenario << ": " << asLine(row);
}

using Files = std::map<std::wstring, std::string>;

// The result of a scenario: what the user saw, and the changes on disk.
struct Outcome {
    Lines trace; // calls to the host
    // "made", "grown", "rewritten" or "gone" by file name below the installation folder, with the
    // process id replaced by "PID".
    Files changes;
    int starts = 0;      // starts of the Companion or the browser
    std::string escaped; // exception that left the add-in; empty for none

    bool operator==(const Outcome&) const = default;
};

// The files below a folder with their content; empty content for a file that cannot be read.
// Excludes the user's temporary folder, whose files are deleted when their last handle is closed.
Files filesBelow(const std::wstring& folder)
{
    const std::wstring ownId = std::to_wstring(GetCurrentProcessId());
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        std::wstring name = entry.path().wstring().substr(folder.size() + 1);
        if (entry.is_directory() || name.starts_with(L"user temp"))
            continue;
        if (const size_t place = name.find(ownId); place != name.npos)
            name.replace(place, ownId.size(), L"PID");
        files[name] = readBytes(entry.path().wstring()).value_or("");
    }
    return files;
}

Files changesBetween(const Files& before, const Files& after)
{
    Files changes;
    for (const auto& [file, bytes] : before)
        if (!after.contains(file))
            changes[file] = "gone";
        else if (after.at(file) != bytes)
            changes[file] = after.at(file).starts_with(bytes) ? "grown" : "rewritten";
    for (const auto& [file, bytes] : after)
        if (!before.contains(file))
            changes[file] = "made";
    return changes;
}

// The quoted texts of the message boxes in the trace.
Lines boxesIn(const Lines& trace)
{
    const std::wstring start = L"message-box(\"TORVA ZEM\", ";
    Lines boxes;
    for (const std::wstring& line : trace)
        if (const size_t place = line.find(start); place != line.npos)
            boxes.push_back(
                line.substr(place + start.size(), line.rfind(L')') - place - start.size()));
    return boxes;
}

// A cell of the table: the items, or "nothing".
std::string cellOf(const std::vector<std::string>& items)
{
    std::string all;
    for (const std::string& item : items)
        all += (all.empty() ? "" : ", ") + item;
    return all.empty() ? "nothing" : all;
}

std::string seenByUser(const Outcome& outcome)
{
    std::vector<std::string> items;
    for (const std::wstring& box : boxesIn(outcome.trace))
        items.push_back(toUtf8(box));
    if (outcome.starts > 0)
        items.push_back("a program starts" + (outcome.starts > 1
                                                  ? ' ' + std::to_string(outcome.starts) + " times"
                                                  : ""));
    if (!outcome.escaped.empty())
        items.push_back(outcome.escaped);
    return cellOf(items);
}

std::string leftOnDisk(const Outcome& outcome)
{
    std::vector<std::string> items;
    for (const auto& [file, change] : outcome.changes)
        items.push_back(change + " `" + toUtf8(file) + '`');
    return cellOf(items);
}

constexpr int everyCall = 1000000;

// The fault name of the row for a run without a fault.
constexpr char noFault[] = "none";

// The messages listed in the page, as written in the trace.
std::set<std::wstring> knownBoxes()
{
    std::set<std::wstring> boxes;
    for (const documents::TableRow& row : documents::tableBelow(
             documents::pageText("messages.md"), "# What the add-in shows, and when"))
        boxes.insert(L'"' + fromUtf8(row.at(0)) + L'"');
    return boxes;
}

// A failing call, named as in the table.
class Fault {
public:
    explicit Fault(const std::string& name) : call_(name)
    {
        raises_ = name.ends_with(" raises");
        isHosts_ = raises_ || name.ends_with(" fails");
        if (isHosts_)
            call_ = name.substr(0, name.find(' '));
    }
    ~Fault() { stop(); }

    // Makes every such call fail, or only the n-th; host calls fail up to the n-th.
    void start(int nth = 0) const
    {
        if (!isHosts_)
            failPlatformCall(call_, nth);
        else if (raises_ && nth > 0)
            standin::raiseAt(call_, nth);
        else if (raises_)
            standin::raiseNext(call_, everyCall);
        else
            standin::failNext(call_, nth == 0 ? everyCall : nth);
    }
    void stop() const
    {
        failPlatformCall("");
        if (isHosts_) {
            standin::raiseAt(call_, 0);
            standin::raiseNext(call_, 0);
            standin::failNext(call_, 0);
        }
    }
    bool isHosts() const { return isHosts_; }
    const std::string& call() const { return call_; }

private:
    std::string call_;
    bool isHosts_ = false;
    bool raises_ = false;
};

// The calls made while a scenario ran, with their counts.
std::map<std::string, int> lastCalls;

std::map<std::string, int> hostCalls()
{
    std::map<std::string, int> calls;
    for (const std::string& operation : standin::operations())
        calls[operation] = standin::callsOf(operation);
    return calls;
}

void noteCalls(const std::map<std::string, int>& platform, const std::map<std::string, int>& before)
{
    lastCalls = platform;
    for (const auto& [operation, count] : hostCalls())
        if (count > before.at(operation)) {
            lastCalls[operation + " fails"] = count - before.at(operation);
            lastCalls[operation + " raises"] = count - before.at(operation);
        }
}

std::string escapeOf(void (*act)(FaultWorld&), FaultWorld& world)
{
    try {
        act(world);
        return "";
    } catch (CException* exception) {
        exception->Delete();
        return "the host's exception comes back to it";
    } catch (const std::exception& exception) {
        return exception.what();
    } catch (...) {
        return "something unknown";
    }
}

const Scenario& scenarioOf(const std::string& name)
{
    return *std::ranges::find(scenarios(), name, &Scenario::name);
}

// Writes the correct row to a file, for updating the page.
void keepForThePage(const FaultRow& row)
{
    if (const char* const file = std::getenv("FAULT_ROWS"))
        std::ofstream(file, std::ios::app) << row.scenario << '\t' << asLine(row) << '\n';
}

// Which of the calls fail individually: 1, 2, 4, 8 and so on, and the last one.
std::vector<int> choiceOf(int count)
{
    std::vector<int> chosen;
    for (int nth = 1; nth <= count; nth *= 2)
        chosen.push_back(nth);
    if (!chosen.empty() && chosen.back() != count)
        chosen.push_back(count);
    return chosen;
}

class Faults : public HostFixture {
protected:
    Faults()
    {
        leadPlatformCalls();
        world_.emplace(installation);
    }

    // Runs the scenario with this fault, or without a fault.
    Outcome run(const Scenario& scenario, const Fault* fault = nullptr, int nth = 0)
    {
        scenario.prepare(*world_);
        newTrace();
        const Files before = filesBelow(installation.root());
        const std::map<std::string, int> callsBefore = hostCalls();
        const int startsBefore = shellStarts();
        Outcome outcome;
        watchPlatformCalls(scenario.callers);
        if (fault)
            fault->start(nth);
        outcome.escaped = escapeOf(scenario.act, *world_);
        const auto look = [&] {
            outcome.changes = changesBetween(before, filesBelow(installation.root()));
            outcome.trace = newTrace();
        };
        // The listener goes on: without the fault its next cycle would create its file again.
        const bool goesOn = scenario.callers == Callers::listener;
        if (goesOn)
            look();
        noteCalls(endWatchingPlatformCalls(), callsBefore);
        if (fault)
            fault->stop();
        if (!goesOn)
            look();
        outcome.starts = shellStarts() - startsBefore;
        expectNothingLost(scenario, outcome);
        return outcome;
    }

    static void expectNothingLost(const Scenario& scenario, const Outcome& outcome)
    {
        static const std::set<std::wstring> known = knownBoxes();
        for (const std::wstring& box : boxesIn(outcome.trace))
            EXPECT_TRUE(known.contains(box)) << toUtf8(box);
        for (const auto& [file, change] : outcome.changes)
            EXPECT_TRUE(change == "made" || change == "grown" || mayReplace(scenario, file))
                << toUtf8(file);
        EXPECT_EQ(standin::undeletedExceptions(), 0);
    }

    // Existing files keep their content, except those that the scenario may replace.
    static bool mayReplace(const Scenario& scenario, const std::wstring& file)
    {
        return std::ranges::any_of(
            scenario.replaces, [&](const std::wstring& end) { return file.ends_with(end); });
    }

    // The correct row: the results of the scenario when every such call fails and of the next run
    // without a fault. Also checks that no individual failing call loses anything.
    FaultRow rowOf(const Scenario& scenario, const std::string& name)
    {
        const Fault fault(name);
        if (!scenario.repeats) {
            const Outcome failed = run(scenario, &fault);
            return {scenario.name, name, seenByUser(failed), leftOnDisk(failed), "\u2013"};
        }
        const Outcome& clean = runClean(scenario);
        std::set<std::string> escapedAlone;
        if (scenario.callers == Callers::thisThread) // too slow for the listener
            for (const int nth : choiceOf(cleanCalls_[name]))
                escapedAlone.insert(run(scenario, &fault, nth).escaped);
        const Outcome failed = run(scenario, &fault);
        for (const std::string& escaped : escapedAlone)
            EXPECT_TRUE(escaped.empty() || escaped == failed.escaped)
                << scenario.name << ", " << name << ", one call: " << escaped;
        const bool works = run(scenario) == clean;
        return {scenario.name, name, cell(seenByUser(failed), seenByUser(clean), name),
                cell(leftOnDisk(failed), leftOnDisk(clean), name),
                works ? "works" : "does nothing more"};
    }

    // Runs once for all rows of a scenario.
    const Outcome& runClean(const Scenario& scenario)
    {
        if (!clean_) {
            clean_ = run(scenario);
            cleanCalls_ = lastCalls;
        }
        return *clean_;
    }

    // The difference from the run without a fault, whose own row lists everything.
    static std::string cell(const std::string& failed, const std::string& clean,
                            const std::string& name)
    {
        return name != noFault && failed == clean ? "no difference" : failed;
    }

    void expectRow(const FaultRow& said)
    {
        const FaultRow found = rowOf(scenarioOf(said.scenario), said.fault);
        keepForThePage(found);
        EXPECT_EQ(asLine(found), asLine(said));
    }

private:
    std::optional<FaultWorld> world_;
    std::optional<Outcome> clean_;
    std::map<std::string, int> cleanCalls_;
};

std::string nameOf(const std::string& text)
{
    std::string name = text;
    std::ranges::replace_if(
        name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
}

std::vector<FaultRow> rowsOf(const Scenario& scenario)
{
    std::vector<FaultRow> rows;
    for (const documents::TableRow& cells :
         documents::tableBelow(documents::pageText("faults.md"), "## " + scenario.name))
        rows.push_back(
            {scenario.name, documents::codeIn(cells.at(0)), cells.at(1), cells.at(2), cells.at(3)});
    return rows;
}

// The rows of scenarios that can run only once in a process.
std::vector<FaultRow> rowsApart()
{
    std::vector<FaultRow> rows;
    for (const Scenario& scenario : scenarios())
        if (!scenario.repeats)
            for (const FaultRow& row : rowsOf(scenario))
                rows.push_back(row);
    return rows;
}

class EachFault : public Faults, public ::testing::WithParamInterface<FaultRow> {};
class EachScenario : public Faults, public ::testing::WithParamInterface<Scenario> {};

} // namespace

TEST_P(EachFault, endsAsTheTableSays)
{
    expectRow(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Table, EachFault, ::testing::ValuesIn(rowsApart()), [](const auto& row) {
    return nameOf(row.param.scenario) + "__" + nameOf(row.param.fault);
});

TEST_P(EachScenario, endsAsTheTableSays)
{
    if (GetParam().repeats)
        for (const FaultRow& row : rowsOf(GetParam()))
            expectRow(row);
}

TEST_P(EachScenario, hasARowForEachCallThatItMakes)
{
    std::set<std::string> listed;
    for (const FaultRow& row : rowsOf(GetParam()))
        listed.insert(row.fault);
    run(GetParam());
    std::set<std::string> made{noFault};
    keepForThePage({GetParam().name, noFault, "?", "?", "?"});
    for (const auto& [call, count] : lastCalls) {
        made.insert(call);
        keepForThePage({GetParam().name, call, "?", "?", "?"});
    }
    EXPECT_EQ(made, listed);
}

INSTANTIATE_TEST_SUITE_P(Table, EachScenario, ::testing::ValuesIn(scenarios()),
                         [](const auto& row) { return nameOf(row.param.name); });
