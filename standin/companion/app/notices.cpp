#include "standin/companion/app/notices.h"

#include "peer/files.h"
#include "peer/notice.h"
#include "peer/notice_port.h"
#include "peer/text.h"
#include "peer/wire_constants.h"
#include "standin/companion/log/event_text.h"
#include <memory>

#include <utility>

namespace companion {
namespace {

void logLine(EventLog& log, std::string_view bytes)
{
    const std::string_view text = bytes.substr(0, bytes.size() - (bytes.ends_with('\n') ? 1 : 0));
    logEvent(log, L"line",
             numberField(L"bytes", static_cast<std::int64_t>(bytes.size())) +
                 bytesField(L"hex", bytes) + textField(L"text", peer::fromAnsi(text)));
}

std::optional<ReceivedSheet> readSheet(EventLog& log, const peer::Notice& notice)
{
    const std::wstring file = peer::fromAnsi(notice.path);
    const std::wstring fields = numberField(L"id", notice.id) + textField(L"file", file);
    logEvent(log, L"setup-sheet", fields);
    const auto bytes = peer::readFile(file, peer::largestAnnouncedFile);
    if (!bytes) {
        logEvent(log, L"setup-sheet-unreadable", fields);
        return std::nullopt;
    }
    const std::wstring text = peer::fromFileBytes(*bytes);
    return ReceivedSheet{static_cast<std::int32_t>(notice.id), file, text, readSetupSheet(text)};
}

template <class Content>
Received orNothing(std::optional<Content>&& content)
{
    return content ? Received(std::move(*content)) : Received();
}

using Clock = std::chrono::steady_clock;

constexpr DWORD tryEveryMs = 100; // limits how long the thread takes to end
// The sockets of a program that has just ended may stay open for a moment.
constexpr std::chrono::seconds quietTries{1};

void passOn(NoticeReceiver& listener, std::vector<std::string>&& lines)
{
    const std::lock_guard lock(listener.mutex);
    for (std::string& line : lines)
        listener.arrived.push_back(std::move(line));
}

void work(NoticeReceiver& listener, peer::NoticeListener& port, const std::stop_token& stop,
          HWND window, UINT message)
{
    while (!stop.stop_requested()) {
        std::vector<std::string> lines = peer::receiveNotices(port);
        if (!lines.empty()) {
            passOn(listener, std::move(lines));
            PostMessageW(window, message, 0, 0);
        }
    }
}

void logPortTaken(EventLog& log, int error)
{
    logEvent(log, L"port-taken",
             numberField(L"port", peer::noticePort) + numberField(L"error", error));
}

// Retries until the port is open. False when the thread has to end first.
bool waitForPort(peer::NoticeListener& opened, int error, const std::stop_token& stop,
                 EventLog& log)
{
    const Clock::time_point quietUntil = Clock::now() + quietTries;
    bool isLogged = false;
    while (error != 0 && !stop.stop_requested()) {
        if (!isLogged && Clock::now() >= quietUntil) {
            logPortTaken(log, error);
            isLogged = true;
        }
        Sleep(tryEveryMs);
        error = peer::openNoticePort(opened);
    }
    if (error == 0 && isLogged)
        logEvent(log, L"port-open", numberField(L"port", peer::noticePort));
    return error == 0;
}

} // namespace

Received receiveNotice(EventLog& log, const std::wstring& folder, std::string_view bytes)
{
    logLine(log, bytes);
    const peer::Notice notice = peer::parseNotice(bytes);
    const std::wstring id = numberField(L"id", notice.id);
    const std::wstring path = peer::fromAnsi(notice.path);
    switch (notice.kind) {
    case peer::NoticeKind::setupSheet:
        return orNothing(readSheet(log, notice));
    case peer::NoticeKind::commit:
        logEvent(log, L"commit-notice", id + textField(L"file", path));
        return {};
    case peer::NoticeKind::toolData:
        logEvent(log, L"tool-data", id);
        return orNothing(receiveTools(log, folder, notice.id));
    case peer::NoticeKind::ncQueue:
        logEvent(log, L"nc-queue", textField(L"file", path));
        return orNothing(receiveQueue(log, folder, path));
    case peer::NoticeKind::unknown:
        break;
    }
    return {};
}

void startListening(NoticeReceiver& listener, EventLog& log, HWND window, UINT message)
{
    auto opened = std::make_unique<peer::NoticeListener>();
    const int error = peer::openNoticePort(*opened);
    listener.worker = std::jthread([&listener, &log, error, opened = std::move(opened), window,
                                    message](const std::stop_token& stop) {
        try {
            if (waitForPort(*opened, error, stop, log))
                work(listener, *opened, stop, window, message);
        } catch (...) {
            // Out of memory: no more notices are received, the window continues.
        }
    });
}

void stopListening(NoticeReceiver& listener)
{
    listener.worker.request_stop();
    if (listener.worker.joinable())
        listener.worker.join();
}

std::vector<std::string> takeNotices(NoticeReceiver& listener)
{
    const std::lock_guard lock(listener.mutex);
    return std::exchange(listener.arrived, {});
}

} // namespace companion
