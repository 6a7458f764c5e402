#include "bench/arrivals.h"

#include "bench/surroundings.h"
#include "support/companion_double.h"

#include <chrono>
#include <mutex>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr DWORD patienceMs = 30000;

std::mutex guard;
Clock::time_point arrival;
bool isUnderWay = false;

HANDLE arrived()
{
    static const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    return event;
}

} // namespace

void noteArrival()
{
    const Clock::time_point now = Clock::now();
    const std::lock_guard lock(guard);
    if (!isUnderWay)
        return;
    isUnderWay = false;
    arrival = now;
    SetEvent(arrived());
}

double deliver(const std::wstring& commandFile, const std::string& request)
{
    {
        const std::lock_guard lock(guard);
        isUnderWay = true;
    }
    require(testing_support::writeRequest(commandFile, request), "the request is written");
    const Clock::time_point closed = Clock::now();
    require(WaitForSingleObject(arrived(), patienceMs) == WAIT_OBJECT_0, "the request arrives");
    const std::lock_guard lock(guard);
    return std::chrono::duration<double, std::milli>(arrival - closed).count();
}

} // namespace bench
