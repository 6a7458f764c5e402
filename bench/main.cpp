// Measures the add-in's code in this process, with the stand-in host's libraries.
//
//   bench.exe FOLDER [WORD…]   prints the table and writes bench.json and growth.dat into the
//                              folder; exits with 1 when a figure exceeds its limit. With words,
//                              makes only the measurements that they name (see `measurements`)
#include "bench/rows.h"
#include "bench/surroundings.h"
#include "control.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace {

struct Measurement {
    std::wstring_view word;
    bench::Rows (*rows)();
};

// In this order, since the longest chains fragment the heap and would slow down the measurements
// that follow.
constexpr Measurement measurements[] = {
    {L"commit", bench::commitRows},        {L"settings", bench::settingsRows},
    {L"queue", bench::ncQueueRows},        {L"tools", bench::toolExportRows},
    {L"pictures", bench::toolPictureRows}, {L"start", bench::startRows},
    {L"listener", bench::listenerRows},    {L"latency", bench::latencyRows},
    {L"memory", bench::hostMemoryRows},
};

void startSurroundings()
{
    WSADATA sockets;
    WSAStartup(MAKEWORD(2, 2), &sockets);
    bench::installation().endStandardInput();
    standin::HostOptions options;
    options.answersMessageBoxes = true;
    bench::require(standin::startHost(options), "the stand-in host starts");
    standin::observeModule(GetModuleHandleW(nullptr));
}

bool isAskedFor(std::wstring_view word, const std::vector<std::wstring_view>& words)
{
    return words.empty() || std::find(words.begin(), words.end(), word) != words.end();
}

bool hasMissed(const bench::Rows& rows)
{
    return std::any_of(rows.begin(), rows.end(), bench::isMissed);
}

// A figure above its limit is measured again, and the last result counts: a busy machine exceeds a
// limit once, slower code each time.
bench::Rows rowsOf(const Measurement& measurement)
{
    constexpr int mostTimes = 3;
    bench::Rows rows = measurement.rows();
    for (int times = 1; times < mostTimes && hasMissed(rows); ++times) {
        std::printf("%ls: a figure has missed its limit, measuring again\n",
                    measurement.word.data());
        rows = measurement.rows();
    }
    return rows;
}

bench::Rows measure(const std::vector<std::wstring_view>& words)
{
    bench::Rows all;
    for (const Measurement& measurement : measurements) {
        if (!isAskedFor(measurement.word, words))
            continue;
        const bench::Rows rows = rowsOf(measurement);
        all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    if (count < 2)
        return 2;
    const std::wstring folder = arguments[1];
    startSurroundings();
    const bench::Rows rows = measure({arguments + 2, arguments + count});
    standin::stopHost();
    bench::printTable(rows);
    if (!bench::writeJson(folder + L"\\bench.json", rows) ||
        !bench::writeCurves(folder + L"\\growth.dat", rows)) {
        std::fprintf(stderr, "cannot write the figures\n");
        return 1;
    }
    return hasMissed(rows) ? 1 : 0;
}
