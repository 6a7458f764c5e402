// The add-in's start in the host: loading the library, m_version and m_open. Each round loads it
// again into this process, in which the system's and the host's libraries are loaded already.
#include "bench/bare_start.h"
#include "bench/rows.h"
#include "bench/surroundings.h"
#include "companion/identifiers.h"
#include "host/message_box.h"
#include "support/counts.h"
#include "support/waiting.h"
#include "host/document.h"
#include "incoming/incoming_state.h"

#include <bit>

namespace bench {

namespace {

constexpr double limit = 1.3;
constexpr size_t rounds = 31;

using NumberEntry = int (*)(int);

NumberEntry entryOf(HMODULE library, const char* name)
{
    return std::bit_cast<NumberEntry>(GetProcAddress(library, name));
}

HMODULE startOurs(const std::wstring& library)
{
    const HMODULE addIn = LoadLibraryW(library.c_str());
    const NumberEntry version = entryOf(addIn, "m_version");
    const NumberEntry open = entryOf(addIn, "m_open");
    version(2100);
    open(0);
    return addIn;
}

// The add-in leaves its window class registered, which would prevent the next window.
void forgetWindowClass()
{
    require(UnregisterClassW(torvapdm::hostInstanceName.c_str(), nullptr),
            "the start has registered the window's class");
}

double timeOurs(const std::wstring& library)
{
    const size_t threads = testing_support::countThreads(GetCurrentProcessId());
    HMODULE addIn = nullptr;
    const double time = timeOnce([&] { addIn = startOurs(library); });
    entryOf(addIn, "m_close")(0);
    require(testing_support::waitUntil(
                [&] { return testing_support::countThreads(GetCurrentProcessId()) == threads; }),
            "the add-in's threads end");
    FreeLibrary(addIn);
    forgetWindowClass();
    return time;
}

double timeBare(const std::wstring& library, HWND mainWindow)
{
    BareAddIn addIn{};
    const double time = timeOnce([&] { addIn = startBare(library, mainWindow); });
    require(addIn.library && addIn.window && addIn.commandFile != INVALID_HANDLE_VALUE,
            "the bare start succeeds");
    stopBare(addIn, mainWindow);
    forgetWindowClass();
    return time;
}

} // namespace

Rows startRows()
{
    const std::wstring ours = testing_support::programFolder() + L"torvapdm.dll";
    const std::wstring bare = writeBareLibrary();
    const HWND mainWindow = torvapdm::getMainFrameWindow();
    const Pair pair = measureInPairs(
        rounds, [&] { return timeOurs(ours); }, [&] { return timeBare(bare, mainWindow); });
    return {ratioRow("start in the host", pair, limit)};
}

} // namespace bench
