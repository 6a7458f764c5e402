// The private memory that the add-in adds to the host: the host's program is started without it,
// with its library only mapped and linked, and with it running, alternately, and measured from
// outside when it is idle. For comparison, what two threads add that do nothing.
#include "bench/bare_start.h"
#include "bench/rows.h"
#include "bench/surroundings.h"
#include "support/bytes.h"
#include "support/processes.h"
#include "support/waiting.h"

#include <atomic>
#include <future>
#include <thread>

// Needs windows.h.
#include <psapi.h>

namespace bench {

namespace {

constexpr size_t rounds = 5;
constexpr double limit = 3072; // KB

std::string traceText(const std::wstring& path)
{
    return testing_support::readBytes(path).value_or("");
}

// Every system stores the private bytes in the field for the page file.
double privateKilobytesOf(DWORD processId)
{
    const HANDLE process =
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId);
    PROCESS_MEMORY_COUNTERS counters{};
    require(GetProcessMemoryInfo(process, &counters, sizeof counters),
            "the system reports the host's memory");
    CloseHandle(process);
    return static_cast<double>(counters.PagefileUsage) / 1024;
}

double measureHost(const std::wstring& library)
{
    const std::wstring addIn =
        library.empty() ? L"" : L" --addin " + testing_support::quoted(library);
    const std::wstring script = installation().path(L"tmp\\settle.script");
    const std::wstring trace = installation().path(L"tmp\\settle.trace");
    // Two cycles of the listener, then a line to wait for.
    testing_support::writeBytes(script, "wait 500\nshow title\n");
    testing_support::writeBytes(trace, "");
    const testing_support::Process host(
        testing_support::quoted(testing_support::programFolder() + L"Mastercam.exe") + addIn +
        L" --script " + testing_support::quoted(script) + L" --trace " +
        testing_support::quoted(trace));
    require(testing_support::waitUntil(
                [&] { return traceText(trace).find("title = ") != std::string::npos; }),
            "the host settles");
    return privateKilobytesOf(host.id());
}

double measureTwoThreads()
{
    const double before = privateKilobytesOf(GetCurrentProcessId());
    std::promise<void> end;
    std::atomic<int> waiting{0};
    const auto wait = [&waiting, ended = end.get_future().share()] {
        ++waiting;
        ended.wait();
    };
    std::thread first(wait);
    std::thread second(wait);
    require(testing_support::waitUntil([&] { return waiting == 2; }), "the threads start");
    const double added = privateKilobytesOf(GetCurrentProcessId()) - before;
    end.set_value();
    first.join();
    second.join();
    return added;
}

} // namespace

Rows hostMemoryRows()
{
    const std::wstring ours = testing_support::programFolder() + L"torvapdm.dll";
    const std::wstring bare = writeBareLibrary();
    std::vector<double> addedByLibrary, addedByThreads, addedInAll;
    for (size_t round = 0; round < rounds; ++round) {
        const double without = measureHost(L"");
        addedByLibrary.push_back(measureHost(bare) - without);
        addedInAll.push_back(measureHost(ours) - without);
        addedByThreads.push_back(measureTwoThreads());
    }
    return {figureRow("memory added to the host", "KB", middleOf(addedInAll), rounds, limit),
            figureRow("memory added by only mapping the library", "KB", middleOf(addedByLibrary),
                      rounds),
            figureRow("memory added by two idle threads", "KB", middleOf(addedByThreads), rounds)};
}

} // namespace bench
