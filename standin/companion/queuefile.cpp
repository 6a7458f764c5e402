#include "queuefile.h"

#include "decisions/eventtext.h"
#include "decisions/exchangepaths.h"
#include "files.h"
#include "text.h"

#include <windows.h>

namespace companion {
namespace {

QueuedProgram lookAt(const QueueEntry& entry)
{
    QueuedProgram program{entry.pathNumber, fromAnsi(entry.program), fromAnsi(entry.group)};
    if (isFile(program.file)) {
        program.bytes = static_cast<std::int64_t>(fileSize(program.file));
    }
    return program;
}

void logProgram(EventLog& log, const QueuedProgram& program)
{
    logEvent(log, L"nc-program",
             numberField(L"number", program.pathNumber) + textField(L"file", program.file) +
                 numberField(L"bytes", program.bytes) + textField(L"group", program.group));
}

} // namespace

std::optional<ReceivedQueue> receiveQueue(EventLog& log, const std::wstring& file)
{
    const auto bytes = readFile(file, largestAnnouncedFile);
    if (!bytes) {
        logEvent(log, L"nc-queue-unreadable", textField(L"file", file));
        return std::nullopt;
    }
    ReceivedQueue queue{file, {}};
    std::int64_t line = 0;
    for (const auto& entry : readQueue(*bytes)) {
        ++line;
        if (entry) {
            queue.programs.push_back(lookAt(*entry));
            logProgram(log, queue.programs.back());
        } else {
            logEvent(log, L"nc-queue-line-bad", numberField(L"line", line));
        }
    }
    // Whoever reaches the port names the file; only a queue of an add-in may go.
    if (isQueueFileName(fileNameOf(file))) {
        DeleteFileW(file.c_str());
    }
    return queue;
}

} // namespace companion
