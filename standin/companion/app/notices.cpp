#include "notices.h"

#include "event_text.h"
#include "peer/notice.h"
#include "peer/files.h"
#include "peer/text.h"

#include <utility>

namespace companion {
namespace {

void logLine(EventLog& log, std::string_view bytes)
{
    const std::string_view text = bytes.substr(0, bytes.size() - (bytes.ends_with('\n') ? 1 : 0));
    logEvent(log, L"line",
             numberField(L"bytes", static_cast<std::int64_t>(bytes.size())) +
                 bytesField(L"hex", bytes) + textField(L"text", fromAnsi(text)));
}

std::optional<ReceivedSheet> readSheet(EventLog& log, const Notice& notice)
{
    const std::wstring file = fromAnsi(notice.path);
    const std::wstring fields = numberField(L"id", notice.id) + textField(L"file", file);
    logEvent(log, L"setup-sheet", fields);
    const auto bytes = readFile(file, largestAnnouncedFile);
    if (!bytes) {
        logEvent(log, L"setup-sheet-unreadable", fields);
        return std::nullopt;
    }
    const std::wstring text = fromFileBytes(*bytes);
    return ReceivedSheet{static_cast<std::int32_t>(notice.id), file, text, readSetupSheet(text)};
}

template <class Content>
Received orNothing(std::optional<Content>&& content)
{
    return content ? Received(std::move(*content)) : Received();
}

} // namespace

Received receiveLine(EventLog& log, const std::wstring& folder, std::string_view bytes)
{
    logLine(log, bytes);
    const Notice notice = readNotice(bytes);
    const std::wstring id = numberField(L"id", notice.id);
    const std::wstring path = fromAnsi(notice.path);
    switch (notice.kind) {
    case NoticeKind::setupSheet:
        return orNothing(readSheet(log, notice));
    case NoticeKind::commit:
        logEvent(log, L"commit-notice", id + textField(L"file", path));
        return {};
    case NoticeKind::toolData:
        logEvent(log, L"tool-data", id);
        return orNothing(receiveTools(log, folder, notice.id));
    case NoticeKind::ncQueue:
        logEvent(log, L"nc-queue", textField(L"file", path));
        return orNothing(receiveQueue(log, folder, path));
    case NoticeKind::unknown:
        break;
    }
    return {};
}

} // namespace companion
