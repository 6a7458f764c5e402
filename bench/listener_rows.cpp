// A cycle of the listener without a request.
//
// The listener's thread function runs on the measuring thread, and its Sleep is redirected to a
// counter that ends it. The rest of a cycle is processor time, including that of Wine's server,
// with a finer resolution than a thread's processor times have.
#include "bench/rows.h"
#include "bench/surroundings.h"
#include "incoming/listener.h"
#include "support/add_in_state.h"
#include "support/bytes.h"
#include "support/system_calls.h"
#include "companion/installation.h"

#include <cstdio>
#include <io.h>
#include <share.h>

namespace bench {

namespace {

constexpr double limit = 1.1;
// Many short rounds: the machine's speed hardly changes within a few milliseconds.
constexpr size_t rounds = 401;
constexpr int cycles = 100;

int cyclesLeft = 0;

void WINAPI countWait(DWORD)
{
    if (--cyclesLeft == 0)
        testing_support::AddInState::stopListener();
}

void leadSleep(bool toCounter)
{
    const auto real = testing_support::systems(&countWait, "Sleep");
    standin::redirectImports(GetModuleHandleW(nullptr), toCounter ? real : &countWait,
                             toCounter ? &countWait : real);
}

void startCounting()
{
    cyclesLeft = cycles;
    testing_support::AddInState::allowListener();
}

void runOurs()
{
    startCounting();
    torvapdm::listenerProcedure(nullptr);
}

// The system calls of a cycle.
void runBare(const std::wstring& path, const std::string& narrow, HANDLE file)
{
    startCounting();
    for (;;) {
        require(_waccess(path.c_str(), 0) == 0, "the command file is there");
        if (FILE* const stream = _fsopen(narrow.c_str(), "r", _SH_DENYNO))
            std::fclose(stream);
        Sleep(100);
        if (testing_support::AddInState::isListenerStopped())
            return;
        LARGE_INTEGER size{};
        GetFileSizeEx(file, &size);
    }
}

Pair measure()
{
    runOurs(); // creates the command file
    const std::wstring path = torvapdm::commandFilePathOfThisProcess();
    const std::string narrow = testing_support::toUtf8(path);
    const HANDLE file = testing_support::AddInState::commandFile();
    Pair pair = timeInPairs(rounds, 1, runOurs, [&] { runBare(path, narrow, file); });
    require(testing_support::AddInState::commandFile() == file, "the command file stays");
    for (Middle* const times : {&pair.ours, &pair.bare})
        *times = {times->median / cycles, times->lower / cycles, times->upper / cycles};
    return pair;
}

} // namespace

Rows listenerRows()
{
    leadSleep(true);
    const Pair pair = measure();
    leadSleep(false);
    CloseHandle(testing_support::AddInState::commandFile());
    testing_support::AddInState::setCommandFile(nullptr);
    testing_support::AddInState::allowListener();
    return {ratioRow("listener cycle without a request", pair, limit)};
}

} // namespace bench
