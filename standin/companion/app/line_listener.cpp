#include "line_listener.h"

#include "event_text.h"
#include "peer/notice_port.h"

#include <memory>
#include <utility>

namespace companion {
namespace {

using Clock = std::chrono::steady_clock;

constexpr DWORD tryEveryMs = 100; // bounds how long the program's end waits for the thread
// The sockets of a program that has just ended may stay open for a moment longer than it.
constexpr std::chrono::seconds quietTries{1};

void handOver(LineListener& listener, std::vector<std::string>&& lines)
{
    const std::lock_guard lock(listener.mutex);
    for (std::string& line : lines)
        listener.arrived.push_back(std::move(line));
}

void work(LineListener& listener, LinePort& port, const std::stop_token& stop, HWND window,
          UINT message)
{
    while (!stop.stop_requested()) {
        std::vector<std::string> lines = receiveLines(port);
        if (!lines.empty()) {
            handOver(listener, std::move(lines));
            PostMessageW(window, message, 0, 0);
        }
    }
}

void logPortTaken(EventLog& log, int error)
{
    logEvent(log, L"port-taken",
             numberField(L"port", linePortNumber) + numberField(L"error", error));
}

// Tries until the port is open. False when the thread has to end first.
bool waitForPort(LinePort& opened, int error, const std::stop_token& stop, EventLog& log)
{
    const Clock::time_point quietUntil = Clock::now() + quietTries;
    bool isLogged = false;
    while (error != 0 && !stop.stop_requested()) {
        if (!isLogged && Clock::now() >= quietUntil) {
            logPortTaken(log, error);
            isLogged = true;
        }
        Sleep(tryEveryMs);
        error = openLinePort(opened);
    }
    if (error == 0 && isLogged)
        logEvent(log, L"port-open", numberField(L"port", linePortNumber));
    return error == 0;
}

} // namespace

void startListening(LineListener& listener, EventLog& log, HWND window, UINT message)
{
    auto opened = std::make_unique<LinePort>();
    const int error = openLinePort(*opened);
    listener.worker = std::jthread([&listener, &log, error, opened = std::move(opened), window,
                                    message](const std::stop_token& stop) {
        try {
            if (waitForPort(*opened, error, stop, log))
                work(listener, *opened, stop, window, message);
        } catch (...) {
            // Out of memory: nothing more is received, the window goes on.
        }
    });
}

void stopListening(LineListener& listener)
{
    listener.worker.request_stop();
    if (listener.worker.joinable())
        listener.worker.join();
}

std::vector<std::string> takeLines(LineListener& listener)
{
    const std::lock_guard lock(listener.mutex);
    return std::exchange(listener.arrived, {});
}

} // namespace companion
