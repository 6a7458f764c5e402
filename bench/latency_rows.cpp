// The time from closing the command file to DoFileOpen, with the add-in open in this process,
// alternating with the same request to a bare poller.
//
// The writer waits for a random time between requests, since the time depends mostly on the point
// in the polling period at which the request is written.
#include "addin/lifecycle.h"
#include "bench/arrivals.h"
#include "bench/bare_poller.h"
#include "bench/rows.h"
#include "bench/surroundings.h"
#include "host/host.h"
#include "companion/identifiers.h"
#include "support/add_in_state.h"
#include "control.h"
#include "support/bytes.h"
#include "support/companion_double.h"
#include "support/system_calls.h"
#include "incoming/incoming_state.h"

#include <atomic>
#include <random>
#include <thread>

namespace bench {

namespace {

constexpr size_t requests = 200;
constexpr size_t block = 40; // requests per block
constexpr double share = 0.95;
constexpr double limitMs = pollingPeriodMs + 10;

struct Latencies {
    std::vector<double> ours; // milliseconds
    std::vector<double> bare;
};

decltype(&DoFileOpen) hostsDoFileOpen = nullptr;

bool noteDoFileOpen(const wchar_t* path, bool merge, bool browse, short mode, bool prompt,
                    bool* escaped, FileMergeOptions* mergeOptions)
{
    noteArrival();
    return hostsDoFileOpen(path, merge, browse, mode, prompt, escaped, mergeOptions);
}

// On another thread, since the user-interface thread runs its message loop.
void writeRequests(Latencies& latencies, const std::wstring& bareFile)
{
    const std::wstring commandFile = installation().commandFile(GetCurrentProcessId());
    const std::string request = testing_support::openRequest(
        17, testing_support::toUtf8(installation().path(L"bench.mcam")));
    std::minstd_rand numbers;
    // The shortest wait is longer than a load.
    std::uniform_int_distribution<DWORD> wait(50, 50 + pollingPeriodMs);
    for (size_t i = 0; i < requests; ++i) {
        Sleep(wait(numbers));
        latencies.ours.push_back(deliver(commandFile, request));
        Sleep(wait(numbers));
        latencies.bare.push_back(deliver(bareFile, request));
    }
}

Latencies measure()
{
    const std::wstring bareFile = installation().path(L"temp\\bare.dat");
    const BarePoller poller(bareFile);
    Latencies latencies;
    std::atomic<bool> isDone = false;
    std::thread writer([&] {
        writeRequests(latencies, bareFile);
        isDone = true;
    });
    while (!isDone)
        standin::pumpFor(100);
    writer.join();
    return latencies;
}

// The percentile of all requests, and its quartiles over the blocks.
Middle percentileOf(const std::vector<double>& values)
{
    std::vector<double> ofBlocks;
    for (auto from = values.begin(); from != values.end(); from += block)
        ofBlocks.push_back(quantileOf({from, from + block}, share));
    const Middle spread = middleOf(ofBlocks);
    return {quantileOf(values, share), spread.lower, spread.upper};
}

Middle toMicroseconds(const Middle& milliseconds)
{
    return {milliseconds.median * 1000, milliseconds.lower * 1000, milliseconds.upper * 1000};
}

Row row(const char* name, const Middle& ours, const Middle& bare, std::optional<double> limit)
{
    Row figure = figureRow(name, "ms", ours, requests, limit);
    figure.ours = toMicroseconds(ours);
    figure.bare = toMicroseconds(bare);
    return figure;
}

} // namespace

Rows latencyRows()
{
    putPart(1);
    hostsDoFileOpen = &DoFileOpen;
    const HMODULE program = GetModuleHandleW(nullptr);
    standin::redirectImports(program, hostsDoFileOpen, &noteDoFileOpen);
    torvapdm::openAddIn();
    require(testing_support::AddInState::messageWindow() != nullptr,
            "the add-in has its message window");
    const Latencies latencies = measure();
    torvapdm::closeAddIn();
    testing_support::AddInState::allowListener();
    UnregisterClassW(torvapdm::hostInstanceName.c_str(), nullptr);
    standin::redirectImports(program, &noteDoFileOpen, hostsDoFileOpen);
    return {row("request to DoFileOpen", middleOf(latencies.ours), middleOf(latencies.bare), {}),
            row("request to DoFileOpen, 95th percentile", percentileOf(latencies.ours),
                percentileOf(latencies.bare), limitMs)};
}

} // namespace bench
