#include "queue_file.h"

#include "peer/bad_lines.h"
#include "event_text.h"
#include "peer/exchange_paths.h"
#include "peer/files.h"
#include "peer/text.h"

#include <windows.h>

namespace companion {
namespace {

QueuedProgram lookAt(const QueueEntry& entry)
{
    QueuedProgram program{entry.pathNumber, fromAnsi(entry.program), fromAnsi(entry.group)};
    if (mayBeElsewhere(program.file))
        program.bytes = notLookedAt;
    else if (isFile(program.file))
        program.bytes = static_cast<std::int64_t>(fileSize(program.file));
    return program;
}

LoggedEvent eventOf(const QueuedProgram& program)
{
    return {L"nc-program",
            numberField(L"number", program.pathNumber) + textField(L"file", program.file) +
                numberField(L"bytes", program.bytes) + textField(L"group", program.group)};
}

std::wstring wholePath(const std::wstring& path)
{
    std::wstring whole(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    whole.resize(
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
    return whole;
}

// Whoever reaches the port names the file; only a queue of an add-in may go.
bool isOfAnAddIn(const std::wstring& file, const std::wstring& folder)
{
    const std::wstring name = fileNameOf(file);
    const std::wstring own = wholePath(folder + L"\\temp\\" + name);
    return isQueueFileName(name) &&
           CompareStringOrdinal(wholePath(file).c_str(), -1, own.c_str(), -1, TRUE) == CSTR_EQUAL;
}

// Takes an add-in's queue out of the host's way before it is read: what the host writes meanwhile
// is the next queue, which must not go with this one. False when it stays: it is too large, or a
// host writes it at this moment and will announce it anew.
bool moveAside(const std::wstring& file, const std::wstring& aside)
{
    return fileSize(file) <= largestAnnouncedFile &&
           MoveFileExW(file.c_str(), aside.c_str(), MOVEFILE_REPLACE_EXISTING);
}

std::optional<std::string> takeQueue(const std::wstring& file, const std::wstring& folder)
{
    const std::wstring aside = file + L".taken";
    if (!isOfAnAddIn(file, folder) || !moveAside(file, aside))
        return readFile(file, largestAnnouncedFile);
    auto bytes = readFile(aside, largestAnnouncedFile);
    if (bytes)
        DeleteFileW(aside.c_str());
    return bytes;
}

} // namespace

std::optional<ReceivedQueue> receiveQueue(EventLog& log, const std::wstring& folder,
                                          const std::wstring& file)
{
    const auto bytes = takeQueue(file, folder);
    if (!bytes) {
        logEvent(log, L"nc-queue-unreadable", textField(L"file", file));
        return std::nullopt;
    }
    ReceivedQueue queue{file, {}};
    std::vector<LoggedEvent> events;
    BadLines bad;
    std::int64_t line = 0;
    for (const auto& entry : readQueue(*bytes)) {
        ++line;
        if (entry) {
            queue.programs.push_back(lookAt(*entry));
            events.push_back(eventOf(queue.programs.back()));
        } else if (countBadLine(bad)) {
            events.push_back({L"nc-queue-line-bad", numberField(L"line", line)});
        }
    }
    if (const std::int64_t more = untoldBadLines(bad); more != 0)
        events.push_back({L"nc-queue-lines-bad", numberField(L"lines", more)});
    logEvents(log, events);
    return queue;
}

} // namespace companion
