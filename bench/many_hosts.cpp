// One Companion and 1, 2, 4 and 8 hosts that open, save and are killed: what is lost, how long a
// request takes, and what it costs.
//
//   many_hosts.exe FOLDER SECONDS SEED [HOSTS]   prints the table and writes hosts.json and
//                                                hosts.dat into the folder; exits with 1 when
//                                                anything is lost but the record of one of two
//                                                commits at the same time. With HOSTS, only with
//                                                so many hosts
#include "bench/processor_time.h"
#include "bench/report.h"
#include "bench/station.h"
#include "support/companion_program.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <filesystem>
#include <map>
#include <set>
#include <thread>

using namespace testing_support;

namespace bench {
namespace {

constexpr unsigned hostCounts[] = {1, 2, 4, 8};

struct Part {
    const char* name;
    Pace pace;
};
constexpr Part parts[] = {{"one a second", {.pauseMs = 1000}},
                          {"without pause", {}},
                          {"without pause, hosts killed", {.cyclesPerKill = 15}}};

// What the Companion's log says about each commit, by the id of its request.
struct Taken {
    std::map<std::int32_t, int> records{};
    std::map<std::int32_t, std::int64_t> announced{}; // by a notice; local time, milliseconds

    void read(FileTail& log)
    {
        for (const std::wstring& line : log.newLines()) {
            const std::wstring event = line.substr(std::min(line.size(), dateTimeAndSpace));
            const size_t id = event.find(L" id=");
            if (id == event.npos)
                continue;
            const auto number = static_cast<std::int32_t>(std::wcstol(&event[id + 4], nullptr, 10));
            if (event.starts_with(L"commit "))
                ++records[number];
            else if (event.starts_with(L"commit-notice "))
                announced.emplace(number, timeOf(line));
        }
    }

private:
    static constexpr size_t dateTimeAndSpace = 24;

    // Since midnight; a measurement that passes midnight is not one to publish.
    static std::int64_t timeOf(const std::wstring& line)
    {
        int hours = 0, minutes = 0, seconds = 0, milliseconds = 0;
        std::swscanf(line.c_str(), L"%*d-%*d-%*d %d:%d:%d.%d", &hours, &minutes, &seconds,
                     &milliseconds);
        return ((hours * 60LL + minutes) * 60 + seconds) * 1000 + milliseconds;
    }
};

// What became of the commits of one run.
struct Result {
    size_t made = 0, lost = 0, lostButAnnounced = 0;
    size_t lostAlone = 0; // no other host announced a commit at the same time
    size_t twice = 0;
    size_t requestsLost = 0, kills = 0;
    std::vector<double> opened{};
};

// A notice is sent right after its record is written, so those of two commits that found the same
// end of the commit file come at the same time, but for what a busy machine adds. Without pause,
// most commits have one of another host so near; the stronger check is that a host on its own loses
// nothing.
bool isAnnouncedWithAnothers(const Commit& commit, const Taken& taken)
{
    constexpr std::int64_t sameTimeMs = 100;
    const auto own = taken.announced.find(commit.id);
    return own != taken.announced.end() &&
           std::ranges::any_of(taken.announced, [&](const auto& other) {
               return other.first / idsPerHost != commit.id / idsPerHost &&
                      std::abs(other.second - own->second) <= sameTimeMs;
           });
}

Result resultOf(const std::vector<Shift>& shifts, const Taken& taken)
{
    Result result;
    for (const Shift& shift : shifts) {
        result.requestsLost += shift.requestsLost;
        result.kills += shift.kills;
        result.opened.insert(result.opened.end(), shift.opened.begin(), shift.opened.end());
        for (const Commit& commit : shift.commits) {
            const auto record = taken.records.find(commit.id);
            result.twice += record != taken.records.end() && record->second > 1;
            if (commit.isCutOff)
                continue;
            ++result.made;
            if (record != taken.records.end())
                continue;
            ++result.lost;
            result.lostButAnnounced += taken.announced.contains(commit.id);
            result.lostAlone += !isAnnouncedWithAnothers(commit, taken);
        }
    }
    return result;
}

// Several hosts and the Companion.
class Company {
public:
    Company(const Installation& installation, unsigned hosts, unsigned seed)
        : installation_(installation),
          companion_(installation),
          log_(installation.path(L"sys\\companion.log"))
    {
        companion_.waitForWindow();
        for (unsigned number = 0; number < hosts; ++number)
            stations_.push_back(std::make_unique<Station>(installation, number, seed));
    }
    ~Company() { companion_.run(L"--quit"); }
    Company(const Company&) = delete;
    Company& operator=(const Company&) = delete;

    struct Cost {
        double host = 0;      // processor time of all hosts, milliseconds
        double companion = 0; // of the Companion
    };
    Cost costSoFar() const
    {
        const std::string folder = toUtf8(installation_.root());
        return {processorMsOf("Mastercam.exe", folder), processorMsOf("TORVA-ZEM.exe", folder)};
    }

    Result work(const Pace& pace, unsigned seconds)
    {
        std::vector<Shift> shifts(stations_.size());
        std::atomic<bool> isOver = false;
        {
            std::vector<std::jthread> threads;
            for (size_t i = 0; i < stations_.size(); ++i)
                threads.emplace_back([&, i] { shifts[i] = stations_[i]->work(pace, isOver); });
            for (unsigned second = 0; second < seconds; ++second) {
                Sleep(1000);
                removePictures();
            }
            isOver = true;
        }
        return resultOf(shifts, waitForCommits(shifts));
    }

private:
    // They would fill the disk.
    void removePictures() const
    {
        std::error_code error;
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(installation_.path(L"library"), error))
            if (entry.path().extension() == L".bmp")
                std::filesystem::remove(entry.path(), error);
    }

    // Until all commits are in the log, or nothing has been added to it for a while.
    Taken waitForCommits(const std::vector<Shift>& shifts)
    {
        constexpr ULONGLONG quietMs = 15000;
        size_t before = 0;
        ULONGLONG since = GetTickCount64();
        waitUntil([&] {
            taken_.read(log_);
            if (taken_.records.size() != before)
                since = GetTickCount64();
            before = taken_.records.size();
            return resultOf(shifts, taken_).lost == 0 || GetTickCount64() - since > quietMs;
        });
        return taken_;
    }

    const Installation& installation_;
    CompanionProgram companion_;
    FileTail log_;
    Taken taken_{};
    std::vector<std::unique_ptr<Station>> stations_{};
};

Row figure(const std::string& name, unsigned hosts, const std::string& unit, const Middle& value,
           size_t rounds)
{
    Row row = figureRow(name + ", " + std::to_string(hosts) + (hosts == 1 ? " host" : " hosts"),
                        unit, value, rounds);
    row.series = name;
    row.operations = hosts;
    return row;
}

Middle exactly(double value)
{
    return {value, value, value};
}

void measureIdle(const Company& company, unsigned hosts, unsigned seconds, std::vector<Row>& rows)
{
    const Company::Cost before = company.costSoFar();
    Sleep(seconds * 1000);
    const Company::Cost after = company.costSoFar();
    rows.push_back(figure("processor time of an idle host", hosts, "ms/s",
                          exactly((after.host - before.host) / seconds / hosts), 1));
    rows.push_back(figure("processor time of the idle Companion", hosts, "ms/s",
                          exactly((after.companion - before.companion) / seconds), 1));
}

double percent(size_t part, size_t whole)
{
    return whole == 0 ? 0 : 100 * static_cast<double>(part) / static_cast<double>(whole);
}

// False when something was lost that must not be.
bool isSound(const Result& result, unsigned hosts, const char* pace)
{
    const bool isLosable = hosts > 1 && result.lostAlone == 0;
    const bool isFine =
        result.requestsLost == 0 && result.twice == 0 && (result.lost == 0 || isLosable);
    std::printf("%u hosts, %s: %zu commits, %zu records lost (%zu of them announced by their "
                "notice), %zu stored twice, %zu requests lost, %zu hosts killed%s\n",
                hosts, pace, result.made, result.lost, result.lostButAnnounced, result.twice,
                result.requestsLost, result.kills, isFine ? "" : "  MUST NOT BE");
    std::fflush(stdout);
    return isFine;
}

bool measure(unsigned hosts, unsigned seconds, unsigned seed, std::vector<Row>& rows)
{
    const Installation installation(Registry::ofTheUser);
    installCompanionWithLibrary(installation);
    Company company(installation, hosts, seed);
    measureIdle(company, hosts, seconds, rows);
    bool isFine = true;
    for (const Part& part : parts) {
        const Company::Cost before = company.costSoFar();
        const Result result = company.work(part.pace, seconds);
        const Company::Cost after = company.costSoFar();
        isFine = isSound(result, hosts, part.name) && isFine;
        const std::string paced = std::string(", ") + part.name;
        rows.push_back(figure("request to DoFileOpen" + paced, hosts, "ms", middleOf(result.opened),
                              result.opened.size()));
        rows.push_back(figure("request to DoFileOpen, 95th percentile" + paced, hosts, "ms",
                              exactly(quantileOf(result.opened, 0.95)), result.opened.size()));
        rows.push_back(figure("records lost" + paced, hosts, "%",
                              exactly(percent(result.lost, result.made)), result.made));
        if (result.kills != 0 || result.made == 0)
            continue;
        if (after.host <= before.host || after.companion <= before.companion) {
            std::printf("the processor times of the programs cannot be read\n");
            isFine = false;
        }
        const auto made = static_cast<double>(result.made);
        rows.push_back(figure("processor time of a check-out and commit, host" + paced, hosts, "ms",
                              exactly((after.host - before.host) / made), result.made));
        rows.push_back(figure("processor time of a check-out and commit, Companion" + paced, hosts,
                              "ms", exactly((after.companion - before.companion) / made),
                              result.made));
    }
    return isFine;
}

// Rows of a curve one after the other, as the plot needs them.
std::vector<Row> byCurve(std::vector<Row> rows)
{
    std::ranges::stable_sort(rows, {}, &Row::series);
    return rows;
}

} // namespace
} // namespace bench

int wmain(int count, wchar_t** arguments)
{
    if (count < 4)
        return 2;
    const std::wstring folder = arguments[1];
    const auto seconds = static_cast<unsigned>(std::wcstoul(arguments[2], nullptr, 10));
    const auto seed = static_cast<unsigned>(std::wcstoul(arguments[3], nullptr, 10));
    std::vector<bench::Row> rows;
    bool isFine = true;
    const auto only = count > 4 ? std::wcstoul(arguments[4], nullptr, 10) : 0;
    for (const unsigned hosts : bench::hostCounts)
        if (only == 0 || hosts == only)
            isFine = bench::measure(hosts, seconds, seed, rows) && isFine;
    rows = bench::byCurve(std::move(rows));
    bench::printTable(rows);
    if (!bench::writeJson(folder + L"\\hosts.json", rows) ||
        !bench::writeCurves(folder + L"\\hosts.dat", rows)) {
        std::fprintf(stderr, "cannot write the figures\n");
        isFine = false;
    }
    return isFine ? 0 : 1;
}
